#include "platform/choice/work_ahead.h"

#include "platform/choice/desktop_choice.h"

#include <QFile>
#include <QLibraryInfo>

#include <dlfcn.h>
#include <future>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The library is there already, since Qt's is bound to it.
void readFontConfiguration()
{
    void *library = dlopen("libfontconfig.so.1", RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        return;
    if (auto *init = reinterpret_cast<int (*)()>(dlsym(library, "FcInit")))
        init();
    dlclose(library);
}

} // namespace

void workAhead()
{
    const QByteArray backend = QFile::encodeName(backendFile(DesktopKind::X11));
    const QByteArray qtPlugin
        = QFile::encodeName(QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/platforms/libqxcb.so"_s);
    // Nothing of Qt's is called there: its first object would take that thread for the main one.
    static const std::future<void> libraries = std::async(std::launch::async, [backend, qtPlugin] {
        for (const QByteArray &file : {backend, qtPlugin})
            dlopen(file.constData(), RTLD_LAZY);
    });
    readFontConfiguration();
}

} // namespace plum
