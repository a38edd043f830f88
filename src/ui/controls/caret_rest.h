#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>

namespace plum {

// Lets the caret blink for a while after each key or click and then stand still: a window that is left open
// would otherwise wake the processor several times a second for as long as it is there.
class CaretRest final : public QObject
{
    Q_OBJECT

public:
    explicit CaretRest(std::chrono::milliseconds patience = std::chrono::seconds(10));
    ~CaretRest() override;
    Q_DISABLE_COPY_MOVE(CaretRest)

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void blink();
    void rest();

    QTimer m_patience;
    int m_flashTime; // milliseconds of one turn, as the user has set it
};

} // namespace plum
