#pragma once

#include <QString>

#include <functional>

namespace plum {

// What other programs of the session may ask of the launcher. All are called from the event loop.
struct LauncherWishes
{
    std::function<void()> show;
    std::function<bool(const QString &keyword)> run; // false: there is no such app
    std::function<bool(const QString &path)> install; // false: there is no such package
};

// A name by which the launcher is known to the session, as long as this object lives.
class LauncherName
{
public:
    virtual ~LauncherName() = default;
};

} // namespace plum
