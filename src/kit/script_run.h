#pragma once

#include "commands/store_page.h"
#include "engine/launcher.h"
#include "flight/flight.h"
#include "kit/run_options.h"
#include "platform/platform.h"
#include "platform/stop_signal.h"
#include "script_system.h"
#include "stopping/hand_stop.h"

#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace plum {
class shurubox;
}

namespace plum::kit {

// One run of a script for a person in a terminal. It always ends the process, with a status.
class ScriptRun final : public Launcher
{
public:
    // Who follows the run from outside of the process.
    struct Follower
    {
        RunObserver &observer;
        std::function<void(const QString &line)> print; // in place of standard error

        // The run is over, and nothing of it is held any more. Does not come back.
        std::function<void(Status)> ended;
    };

    // Without a desktop a tip is printed and goes, and a question is given up.
    ScriptRun(const QString &programPath, bool hasDesktop);
    ~ScriptRun() override;
    Q_DISABLE_COPY_MOVE(ScriptRun)

    // The words that a script may use, for who looks at one without running it.
    ScriptVocabulary vocabulary() { return m_scripts.vocabulary(); }

    Paths &paths() { return m_platform->paths(); }

    // Before the start. There is no trace of a run that is followed.
    void setFollower(Follower follower);

    // Ends the run, in any thread.
    StopSignal &stopSignal() { return m_stop; }

    // Gives back what the run holds of the desktop, once.
    void letGo();

    // Returns only while the script waits for the user.
    void start(const RunOptions &options);

    QString keywordBoxText() const override { return {}; }
    QString inputEntryText() const override;
    void showInput(const QString &prompt, const QString &variable) override;
    void showTip(const QString &text) override;
    void showMessage(const Message &message) override;
    void hideLauncher() override { }
    void endProcess() override { end(Done); }

private:
    // There is no store here: pages that a script wants to show beside a program go nowhere.
    class NoStorePage final : public StorePage
    {
        void setBrowserWidth(int) override { }
        void setBrowserHeight(int) override { }
        void navigateToBlank() override { }
        void layOut() override { }
        void showLoadingPicture() override { }
    };

    [[noreturn]] void end(Status status);
    void print(const QString &line) const;
    void writeTrace(Status status);
    [[noreturn]] void fail(const QString &place, const QString &reason);
    void endAfter(std::chrono::milliseconds patience);
    void guarded(const std::function<void()> &run);
    shurubox &freshBox();
    void goOn(const Answer &answer, bool isClosed);
    void answerWithoutDesktop(bool isQuestion);

    std::unique_ptr<Platform> m_platform;
    Flight m_flight;
    StopSignal m_stop;
    HandStop m_hand;
    bool m_hasDesktop;
    NoStorePage m_storePage;
    ScriptSystem m_scripts;
    QString m_file;
    QString m_trace;
    QString m_failure;
    QPointer<shurubox> m_box;
    std::optional<Follower> m_follower;
    bool m_isEnding = false;
    bool m_hasLetGo = false;
    RunTicket m_asking = 0;
    bool m_waits = false;
    bool m_isQuestion = false;
};

} // namespace plum::kit
