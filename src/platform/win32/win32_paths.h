#pragma once

#include "platform/paths.h"

namespace plum {

class Win32Paths final : public Paths
{
public:
    Win32Paths();

    QString programFolder() const override { return m_programFolder; }
    // Paths are the system's own already, and it does not tell letter cases apart.
    QString toSystem(const QString &path) const override { return path; }
    bool interpretsNames() const override { return true; }

private:
    QString m_programFolder;
};

} // namespace plum
