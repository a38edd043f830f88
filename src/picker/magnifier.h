#pragma once

#include <QWidget>

namespace plum {

class Picker;

// The pixels around the picker's mark, many times as large.
class Magnifier final : public QWidget
{
public:
    Magnifier(const Picker &picker, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Picker &m_picker;
};

} // namespace plum
