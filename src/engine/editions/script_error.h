#pragma once

#include <QList>
#include <QString>

#include <exception>

namespace plum {

// What is wrong at a place of a script, as one sentence for people.
struct ScriptMistake
{
    QString file;
    int line = 1; // both counted from 1
    int column = 1;
    QString reason;

    // FILE:line:column: sentence
    QString toText() const;
};

// What ends a run of edition 2, or keeps one from beginning: there is at least one mistake. It is no
// RunTimeError: nothing suppresses it statement by statement.
class ScriptError : public std::exception
{
public:
    // `app` is the keyword, or the file's name where there is none.
    ScriptError(QString app, QList<ScriptMistake> mistakes, bool gaveUp = false);

    const QString &app() const { return m_app; }
    const QList<ScriptMistake> &mistakes() const { return m_mistakes; }

    // The user did not answer a question.
    bool gaveUp() const { return m_gaveUp; }

    // For a message: app, line, column, reason of each mistake, a line each.
    QString toText() const;

    const char *what() const noexcept override { return "script error"; }

private:
    QString m_app;
    QList<ScriptMistake> m_mistakes;
    bool m_gaveUp;
};

} // namespace plum
