#pragma once

#include "platform/paths.h"

namespace plum {

class FilePaths final : public Paths
{
public:
    // `programPath` as the program was called; it is looked up in PATH when it is a bare name, and
    // the running file counts when it is not there either.
    explicit FilePaths(const QString &programPath);

    QString programFolder() const override { return m_programFolder; }
    QString toSystem(const QString &path) const override;
    bool interpretsNames() const override { return false; }

private:
    QString m_programFolder;
};

} // namespace plum
