#include "desktop/support/conditions.h"

#include "support/wait_until.h"

namespace plum {

bool eventually(const std::function<bool()> &condition)
{
    return test::waitUntil(condition);
}

bool answersWhenRipe(const std::function<bool()> &isAsked, const std::function<void()> &answer)
{
    constexpr qint64 untilRipe = 600; // milliseconds, a little more than the dialog wants
    constexpr qint64 untilAgain = 5000; // milliseconds
    if (!eventually(isAsked))
        return false;
    QDeadlineTimer next(untilRipe);
    return eventually([&] {
        if (!isAsked())
            return true;
        if (next.hasExpired()) {
            answer();
            next.setRemainingTime(untilAgain);
        }
        return false;
    });
}

} // namespace plum
