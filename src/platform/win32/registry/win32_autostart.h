#pragma once

#include "platform/autostart.h"

#include <QString>

namespace plum {

class Paths;

// The value "Plum" among the programs that Windows starts for the user; the installer writes the same one.
class Win32Autostart final : public Autostart
{
public:
    explicit Win32Autostart(const Paths &paths)
        : m_paths(paths)
    {
    }

    bool isOn() const override;
    bool setOn(bool isOn) override;

private:
    QString command() const;

    const Paths &m_paths;
};

} // namespace plum
