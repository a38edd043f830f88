#pragma once

#include "look/borderless_window.h"

#include <QElapsedTimer>

#include <chrono>

class QPushButton;

namespace plum {

struct InstallOffer;

// Asks whether a package is to be installed. It is a window of this process, above all others, and no page
// can reach it or answer it. Enter or a click installs once the user has had the time to see what is asked:
// what comes earlier was meant for another window. Closes itself with the answer and deletes itself.
class InstallDialog final : public BorderlessWindow
{
    Q_OBJECT

public:
    // How long the dialog has to be visible before an answer of "yes" counts.
    static constexpr std::chrono::milliseconds ripeAfter{500};

    explicit InstallDialog(const InstallOffer &offer);

    void bringUp();

Q_SIGNALS:
    void seen(); // it is painted, anew after each time that it was hidden
    void agreed();
    void closed(); // by whatever way; comes after `agreed`

protected:
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isRipe() const;
    void agree();

    QPushButton *m_install;
    QPushButton *m_cancel;
    QElapsedTimer m_visible; // since when; invalid while it is not
};

} // namespace plum
