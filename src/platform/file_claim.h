#pragma once

#include <QString>

#include <optional>

namespace plum {

// A claim on a file that one object at a time can hold, in whatever process. It ends with the object, and
// with the process however that ends; the file itself stays and claims nothing.
class FileClaim
{
public:
    FileClaim() = default;
    ~FileClaim();
    Q_DISABLE_COPY_MOVE(FileClaim)

    enum class Outcome {
        Claimed,
        HeldByAnother,
        Impossible, // the file can be neither opened nor made, or its file system knows no claims
    };

    // The file at `systemPath` is made if it is missing, its folder is not. An earlier claim of this object
    // ends.
    Outcome claim(const QString &systemPath);

    // Nothing happens without a claim.
    void release();

    // The process that holds a claim on the file, where that can be known.
    static std::optional<qint64> holder(const QString &systemPath);

private:
    static constexpr qintptr none = -1;

    qintptr m_handle = none;
};

} // namespace plum
