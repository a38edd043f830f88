#pragma once

#include <QLabel>
#include <QTimer>

#include <chrono>

namespace plum {

// The line under the lists. What runs comes before a download, that before a passing word, that before an
// answer to what is typed, and that before what stands there otherwise. Enter follows its
// link; of several, the one that Tab went to.
class Footer final : public QLabel
{
    Q_OBJECT

public:
    explicit Footer(QWidget *parent);

    void setStanding(const QString &richText);
    void say(const QString &plainText, std::chrono::milliseconds howLong = std::chrono::seconds(6));

    // Says where a run was stopped. A link offers to show the line, where `hasLine`.
    void sayStopped(const QString &plainText, bool hasLine);

    // A run has failed. A link offers to show what it did.
    void sayFailed(const QString &plainText);

    // Empty when nothing runs. A link offers to stop it.
    void setRunning(const QString &plainText);

    // Whether what runs waits for the user's hand to rest; counts with the next words about what runs. A
    // link offers to go on at once.
    void setWaitsForHand(bool waits);

    // For how many apps the store has another version. A link offers to install them.
    void setUpdates(int apps);

    // Empty when nothing is downloaded.
    void setDownload(const QString &plainText);

    // What keeps Enter in the keyword box from running an app. Nothing on an empty box.
    enum class Hindrance {
        None,
        NoApp, // has the keyword. A link offers to make one
        NoKeyword, // stands before the first blank
        NotLookedFor, // text with a blank came at once, and filters nothing. A link offers to look
        Selected, // a result is. A link offers to let it go
    };

    // `keyword` is the one that was not looked for, or that is selected.
    void setHindrance(Hindrance hindrance, const QString &keyword = {});

Q_SIGNALS:
    void createRequested();
    void lookRequested();
    void deselectRequested();
    void goOnRequested();
    void stopRequested();
    void stoppedLineRequested();
    void whatHappenedRequested();
    void hotkeyRequested();
    void updatesRequested();

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void refresh();
    QString answer() const;
    void follow(const QString &link);

    QString m_standing;
    QString m_passing;
    QString m_running;
    QString m_download;
    QTimer m_passes; // while a passing word is shown
    Hindrance m_hindrance = Hindrance::None;
    QString m_keyword; // that the hindrance is about
    bool m_waitsForHand = false;
    int m_updates = 0;
};

} // namespace plum
