#include "platform/loaded_module.h"

#include <QCoreApplication>

namespace plum {

// The executable's own folder, not the program folder: a symbolic link to the program has no modules beside
// it.
LoadedModule::LoadedModule(const QString &name)
    : m_loader(QCoreApplication::applicationDirPath() + QLatin1Char('/') + name)
{
}

} // namespace plum
