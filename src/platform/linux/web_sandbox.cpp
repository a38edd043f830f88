#include "platform/web_sandbox.h"

#include <QByteArray>
#include <QtGlobal>

#include <unistd.h>

namespace plum {

void prepareWebSandbox()
{
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

} // namespace plum
