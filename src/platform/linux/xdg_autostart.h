#pragma once

#include "platform/autostart.h"

#include <QString>

namespace plum {

class Paths;

// `plum.desktop` among the programs that the user's desktop starts.
class XdgAutostart final : public Autostart
{
public:
    explicit XdgAutostart(const Paths &paths)
        : m_paths(paths)
    {
    }

    bool isOn() const override;
    bool setOn(bool isOn) override;

private:
    QString program() const;

    const Paths &m_paths;
};

} // namespace plum
