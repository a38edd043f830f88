#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace plum {

class AppFaces;
class AppLibrary;
class Questions;
class StoreDoor;
struct InstallOffer;

// Packages that need a keyword from the user before they are installed: those of the store, and dropped ones
// whose own keyword is taken.
class PackageNames
{
public:
    struct Needs
    {
        AppLibrary &appLibrary;
        AppFaces &faces;
        StoreDoor &store;
        Questions &questions;
        // Asks whether to install; calls `install` when the user agrees, and never otherwise.
        std::function<void(const InstallOffer &offer, std::function<void()> install)> askInstall;
    };

    explicit PackageNames(Needs needs);

    // Asks whether to install the dropped package, and before that for another keyword where its own is
    // taken.
    void packageDropped(const QString &path);

    // Asks for the keyword of a package that the store is going to install.
    void askForStore(const QString &name);

    // The answer; `isFree`: nothing has this name yet.
    void install(const QString &name, bool isFree);

private:
    void askForDropped(const QString &path, const QString &keyword, bool replaces);

    Needs m;

    // What the question that is open is about: a package that was dropped, by its path, else one of the
    // store.
    std::optional<QString> m_droppedPath;
};

} // namespace plum
