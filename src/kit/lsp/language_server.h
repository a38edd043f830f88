#pragma once

#include "check/script_check.h"
#include "check/script_words.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>

namespace plum::kit {

// The language server protocol for scripts: findings as somebody types, completion, explanations. It knows
// nothing of streams.
class LanguageServer
{
public:
    explicit LanguageServer(const ScriptVocabulary &vocabulary)
        : m_check(vocabulary)
        , m_words(vocabulary)
    {
    }

    // What is to be sent in answer to a message, in this order.
    QList<QJsonObject> answer(const QJsonObject &message);

    // After the message that ends the server.
    bool hasEnded() const { return m_hasEnded; }

    // 0 when the end was announced, as the protocol has it; else 1.
    int status() const { return m_isShutDown ? 0 : 1; }

private:
    struct Document
    {
        QString folder; // empty when the document is no file
        QString text;
        QStringList lines;
        Edition edition = Edition::One;
    };

    QList<QJsonObject> notified(const QString &method, const QJsonObject &parameters);
    QJsonValue requested(const QString &method, const QJsonObject &parameters) const;
    QJsonObject findingsOf(const QString &address) const;
    void change(const QString &address, const QString &text);
    QJsonArray completion(const Document &document, int line, int character) const;
    QJsonValue hover(const Document &document, int line, int character) const;

    ScriptCheck m_check;
    ScriptWords m_words;
    QHash<QString, Document> m_documents; // by address
    bool m_isShutDown = false;
    bool m_hasEnded = false;
};

} // namespace plum::kit
