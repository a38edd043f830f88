#pragma once

#include "look/borderless_window.h"

namespace plum {

// One page with the keys of the launcher.
class KeySheet final : public BorderlessWindow
{
    Q_OBJECT

public:
    explicit KeySheet(QWidget *owner);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace plum
