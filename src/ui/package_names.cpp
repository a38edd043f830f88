#include "ui/package_names.h"

#include "library/app_library.h"
#include "ui/app_faces.h"
#include "ui/questions.h"
#include "ui/store_door.h"

namespace plum {

PackageNames::PackageNames(const Parts &parts)
    : m(parts)
{
}

void PackageNames::askForStore(const QString &name)
{
    m_droppedPath.reset();
    m.questions.askPackageName(name, name);
}

void PackageNames::packageDropped(const QString &path)
{
    const AppLibrary::Dropped outcome = m.library.DropPackage(path);
    m.faces.forget();
    if (outcome != AppLibrary::Dropped::NeedsName)
        return;
    m_droppedPath = path;
    m.questions.askPackageName(AppLibrary::packageKeyword(path), path);
}

void PackageNames::install(const QString &name, bool isFree)
{
    if (!m_droppedPath) {
        m.store.askInstall(isFree ? InstallFlag::ByName : InstallFlag::Reinstall, name);
        return;
    }
    m.library.InstallPackage(*m_droppedPath, isFree ? name : AppLibrary::packageKeyword(*m_droppedPath));
    m.faces.forget();
}

} // namespace plum
