#pragma once

#include <QLockFile>
#include <QString>

#include <optional>

namespace plum {

// One launcher at a time for each program folder. The claim ends with this object, and with the process
// however it ends.
class SingleInstance
{
public:
    explicit SingleInstance(const QString &programFolder);

    // False when another process holds the claim.
    bool claim();

    // The process that holds the claim, where that can be known.
    std::optional<qint64> holder() const;

private:
    QLockFile m_lock;
};

} // namespace plum
