#pragma once

#include <QtGlobal>

#include <sys/fsuid.h>
#include <unistd.h>

namespace plum::test {

// While one lives, this thread may do with files what any user may who does not own them: the right to read
// and write everything, which tests have that run as root, is gone.
class PlainUser
{
public:
    PlainUser()
    {
        if (geteuid() == 0)
            setfsuid(nobody);
    }
    ~PlainUser()
    {
        if (geteuid() == 0)
            setfsuid(0);
    }
    Q_DISABLE_COPY_MOVE(PlainUser)

private:
    static constexpr uid_t nobody = 65534;
};

} // namespace plum::test
