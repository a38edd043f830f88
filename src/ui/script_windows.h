#pragma once

#include "engine/launcher.h"

#include <QPointer>

#include <functional>

class QLineEdit;
class QWidget;

namespace plum {

// What a script on the command line sees of the launcher: an input box, tips and messages as plain windows.
// There is no keyword box, so nothing was typed after a keyword.
class ScriptWindows final : public Launcher
{
public:
    struct Actions
    {
        std::function<void(const QString &variable, const QString &text)> confirmInput;
        std::function<void()> endProcess;
    };

    explicit ScriptWindows(Actions actions)
        : m_actions(std::move(actions))
    {
    }
    ~ScriptWindows() override;
    Q_DISABLE_COPY_MOVE(ScriptWindows)

    // The actions may need what is built on this object, so they may come later.
    void setActions(Actions actions) { m_actions = std::move(actions); }

    QString keywordBoxText() const override { return {}; }
    QString inputEntryText() const override;
    void showInput(const QString &prompt, const QString &variable) override;
    void showTip(const QString &text) override;
    void showMessage(const Message &message) override;
    void hideLauncher() override { }
    void endProcess() override { m_actions.endProcess(); }

private:
    QWidget *freshBox();

    Actions m_actions;
    QPointer<QWidget> m_box;
    QPointer<QLineEdit> m_entry;
};

} // namespace plum
