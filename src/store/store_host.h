#pragma once

#include <QString>

namespace plum {

struct Message;

// What the store wants of the launcher around it.
class StoreHost
{
public:
    virtual ~StoreHost() = default;

    // Shows a message and waits until the user has closed it.
    virtual void showMessage(const Message &message) = 0;

    // Shows the name box for a package from the store, `name` in its entry. It does not wait: the box calls
    // `webbox::XzSet`, with mode 1 for a new name and mode 0 to install over the app that is there.
    virtual void askName(const QString &name) = 0;

    // Adds an app to both lists of the launcher, unless it is there already, and saves the list.
    virtual void addApp(const QString &keyword) = 0;
};

} // namespace plum
