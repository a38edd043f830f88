#pragma once

#include <QString>

namespace plum {

// What the person who started the program should know about the machine, one line each. Scripts do not
// notice it.
class Notices
{
public:
    virtual ~Notices() = default;

    virtual void tell(const QString &line) = 0;
};

// Notices on standard error, behind the program's name.
class StandardErrorNotices final : public Notices
{
public:
    void tell(const QString &line) override;
};

} // namespace plum
