#pragma once

#include <QAbstractButton>

namespace plum {

// A button that shows a picture alone, drawn from lines so that it is sharp at every scale. Its tool tip says
// what it does, to a screen reader too.
class PictureButton final : public QAbstractButton
{
    Q_OBJECT

public:
    enum class Picture {
        Back,
        Close,
        Confirm,
        Hotkey,
        Menu,
        Pick,
        Run,
        Step,
        Store,
    };

    PictureButton(const QString &name, Picture picture, const QString &toolTip, QWidget *parent);

    Picture picture() const { return m_picture; }
    QSize sizeHint() const override { return {32, 32}; }

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Picture m_picture;
};

} // namespace plum
