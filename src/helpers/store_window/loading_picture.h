#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>

namespace plum {

// A ring that turns while it is visible.
class LoadingPicture final : public QWidget
{
    Q_OBJECT

public:
    LoadingPicture(QColor ring, QColor part, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    const QColor m_ring;
    const QColor m_part;
    QTimer m_turning;
    int m_angle = 0; // degrees
};

} // namespace plum
