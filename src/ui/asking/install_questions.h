#pragma once

#include "library/install_offer.h"

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>

namespace plum {

class InstallDialog;
class Windows;

// The questions whether packages are to be installed: one is shown at a time, the others wait for their turn.
class InstallQuestions final : public QObject
{
    Q_OBJECT

public:
    explicit InstallQuestions(Windows &windows);
    ~InstallQuestions() override;
    Q_DISABLE_COPY_MOVE(InstallQuestions)

    // `install` is called when the user agrees, and never otherwise.
    void ask(const InstallOffer &offer, std::function<void()> install);

    bool isAsking() const { return !m_waiting.empty(); }

private:
    struct Question
    {
        InstallOffer offer;
        std::function<void()> install;
    };

    void showFirst();
    void insistOnFocus();
    void answered();

    Windows &m_windows;
    std::deque<Question> m_waiting; // the first one is shown
    QPointer<InstallDialog> m_dialog;
    bool m_hasAgreed = false;
};

} // namespace plum
