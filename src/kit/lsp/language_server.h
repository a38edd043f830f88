#pragma once

#include "kit/lsp/script_answers.h"

#include <QHash>

#include <functional>

namespace plum::kit {

// The language server protocol for scripts: which scripts are open, and their findings as somebody types. It
// knows nothing of streams.
class LanguageServer
{
public:
    // `speak` is told the locale that the editor shows its own texts in, where it names one.
    explicit LanguageServer(
        const ScriptVocabulary &vocabulary, std::function<void(const QString &locale)> speak = {})
        : m_answers(vocabulary)
        , m_speak(std::move(speak))
    {
    }

    // What is to be sent in answer to a message, in this order.
    QList<QJsonObject> answer(const QJsonObject &message);

    // After the message that ends the server.
    bool hasEnded() const { return m_hasEnded; }

    // 0 when the end was announced, as the protocol has it; else 1.
    int status() const { return m_isShutDown ? 0 : 1; }

private:
    QList<QJsonObject> notified(const QString &method, const QJsonObject &parameters);
    QJsonValue requested(const QString &method, const QJsonObject &parameters);
    void open(const QString &address, const QString &text);
    void change(const QString &address, const QJsonArray &changes);
    QJsonObject findingsOf(const QString &address) const;

    ScriptAnswers m_answers;
    std::function<void(const QString &locale)> m_speak;
    QHash<QString, OpenScript> m_scripts; // by address
    bool m_isShutDown = false;
    bool m_hasEnded = false;
};

} // namespace plum::kit
