#pragma once

#include <QString>

#include <functional>

namespace plum {

struct InstallOffer;
struct Message;

// What the store wants of the launcher around it.
class StoreHost
{
public:
    virtual ~StoreHost() = default;

    // Shows a message and waits until the user has closed it.
    virtual void showMessage(const Message &message) = 0;

    // Shows the name box for a package from the store, `name` in its entry. It does not wait: the box calls
    // `webbox::askInstall`, for a new name or to install over the app that is there.
    virtual void askName(const QString &name) = 0;

    // Asks whether to install a package, out of the reach of every page. It does not wait: `install` is
    // called when the user agrees, and never otherwise.
    virtual void askInstall(const InstallOffer &offer, std::function<void()> install) = 0;

    // Whether one of these two questions is open, or waits for its turn.
    virtual bool isAsking() const = 0;

    // Adds an app to both lists of the launcher, unless it is there already, and saves the list.
    virtual void addApp(const QString &keyword) = 0;
};

} // namespace plum
