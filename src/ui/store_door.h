#pragma once

#include <QString>

namespace plum {

// What the launcher wants of the store.
class StoreDoor
{
public:
    virtual ~StoreDoor() = default;

    // Shows the store's catalogue.
    virtual void openCatalogue() = 0;

    enum InstallFlag {
        Reinstall = 0, // the store's current package, whatever the name
        ByName = 1,
    };

    virtual void install(const QString &name, InstallFlag flag) = 0;
};

} // namespace plum
