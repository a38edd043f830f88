#pragma once

#include "check/script_words.h"

#include <QListWidget>

namespace plum {

// The list of what can stand at the caret, below or above its line. The editor keeps the keyboard.
class CompletionList final : public QListWidget
{
    Q_OBJECT

public:
    explicit CompletionList(QWidget *parent);

    // `word` is the caret's line from the word's beginning to the caret, in the parent.
    void open(const QList<ScriptWords::Suggestion> &suggestions, bool marksFirst, const QRect &word);

    // The marked one; null when none is.
    const ScriptWords::Suggestion *marked() const;

    // By an arrow or page key, around the ends; false for another one.
    bool moveMark(int key);

private:
    QList<ScriptWords::Suggestion> m_suggestions;
};

} // namespace plum
