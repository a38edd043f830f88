#pragma once

#include "look/borderless_window.h"

namespace plum {

// A few words in the corner of the screen that go by themselves or at a click. They never take the keyboard
// away from what the user or a script is doing.
class PassingNote final : public BorderlessWindow
{
    Q_OBJECT

public:
    static void tell(const QString &text);

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    explicit PassingNote(const QString &text);
};

} // namespace plum
