#include "ui/package_names.h"

#include "engine/text_functions.h"
#include "library/app_library.h"
#include "ui/app_faces.h"
#include "ui/questions.h"
#include "ui/store_door.h"

namespace plum {

using namespace Qt::StringLiterals;

PackageNames::PackageNames(const Parts &parts)
    : m(parts)
{
}

void PackageNames::askForStore(const QString &name)
{
    m.questions.askPackageName(name, name);
}

void PackageNames::packageDropped(const QString &path)
{
    const AppLibrary::Dropped outcome = m.library.DropPackage(path);
    m.faces.forget();
    if (outcome != AppLibrary::Dropped::NeedsName)
        return;
    m_installMode = 1;
    m.questions.askPackageName(Piece(m.library.pendingInstall(), u"|"_s, 1), path);
}

void PackageNames::install(const QString &name, bool isFree)
{
    if (m_installMode == 0) {
        m.store.install(name, isFree ? StoreDoor::ByName : StoreDoor::Reinstall);
        return;
    }
    if (isFree)
        m.library.setPendingInstall(Piece(m.library.pendingInstall(), u"|"_s, 0) + u'|' + name);
    m.library.InstallPackage(m.library.pendingInstall());
    m.faces.forget();
}

} // namespace plum
