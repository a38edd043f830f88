#pragma once

#include "library/install_offer.h"

namespace plum {

// What the launcher wants of the store.
class StoreDoor
{
public:
    virtual ~StoreDoor() = default;

    // Shows the store's catalogue.
    virtual void openCatalogue() = 0;

    // Asks whether to install the package that the name box was about.
    virtual void askInstall(InstallFlag flag, const QString &name) = 0;

    // Brings the apps of the store to their newest versions.
    virtual void installUpdates() = 0;
};

} // namespace plum
