#include "ui/package_names.h"

#include "library/app_library.h"
#include "library/install_offer.h"
#include "ui/asking/questions.h"
#include "ui/lists/app_faces.h"
#include "ui/store_door.h"

namespace plum {

PackageNames::PackageNames(Needs needs)
    : m(std::move(needs))
{
}

void PackageNames::askForStore(const QString &name)
{
    m_droppedPath.reset();
    m.questions.askPackageName(name, name);
}

void PackageNames::packageDropped(const QString &path)
{
    const AppLibrary::Dropped dropped = m.appLibrary.DropPackage(path);
    if (dropped == AppLibrary::Dropped::MayInstall)
        askForDropped(path, AppLibrary::packageKeyword(path), false);
    if (dropped != AppLibrary::Dropped::NeedsName)
        return;
    m_droppedPath = path;
    m.questions.askPackageName(AppLibrary::packageKeyword(path), path);
}

void PackageNames::askForDropped(const QString &path, const QString &keyword, bool replaces)
{
    m.askInstall(
        {.keyword = keyword, .origin = path, .replaces = replaces, .size = m.appLibrary.packageSize(path)},
        [this, path, keyword] {
            m.appLibrary.InstallPackage(path, keyword);
            m.faces.forget();
        });
}

void PackageNames::install(const QString &name, bool isFree)
{
    if (!m_droppedPath) {
        m.store.askInstall(isFree ? InstallFlag::ByName : InstallFlag::Reinstall, name);
        return;
    }
    askForDropped(*m_droppedPath, isFree ? name : AppLibrary::packageKeyword(*m_droppedPath), !isFree);
}

} // namespace plum
