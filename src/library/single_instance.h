#pragma once

#include <QLockFile>
#include <QString>

namespace plum {

// One launcher at a time for each program folder. The claim ends with this object, and with the process
// however it ends.
class SingleInstance
{
public:
    explicit SingleInstance(const QString &programFolder);

    // False when another process holds the claim.
    bool claim();

private:
    QLockFile m_lock;
};

} // namespace plum
