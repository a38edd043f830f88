#pragma once

#include "check/quick_fixes.h"
#include "check/script_words.h"
#include "kit/lsp/picture_previews.h"
#include "kit/lsp/protocol_values.h"

namespace plum::kit {

// What editors ask about a script, and the answers.
class ScriptAnswers
{
public:
    explicit ScriptAnswers(const ScriptVocabulary &vocabulary)
        : m_vocabulary(vocabulary)
        , m_check(vocabulary)
        , m_words(vocabulary)
        , m_fixes(m_check, m_words)
    {
    }
    Q_DISABLE_COPY_MOVE(ScriptAnswers)
    ~ScriptAnswers() = default;

    const ScriptCheck &check() const { return m_check; }

    // The answer to a request of the protocol; undefined when there is no such request. Raises a
    // RequestError.
    QJsonValue answer(const QString &method, const OpenScript &script, const QJsonObject &parameters);

    // The methods that are answered, as an editor is told of them at the start.
    static QJsonObject capabilities();

private:
    // Each member answers one method.
    QJsonValue completion(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue hover(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue signatureHelp(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue definition(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue references(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue highlight(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue prepareRename(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue rename(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue symbols(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue formatting(const OpenScript &script, const QJsonObject &parameters);
    QJsonValue codeActions(const OpenScript &script, const QJsonObject &parameters);

    QString lookOf(const OpenScript &script, const ScriptWords::Argument &argument);

    ScriptVocabulary m_vocabulary;
    ScriptCheck m_check;
    ScriptWords m_words;
    QuickFixes m_fixes;
    PicturePreviews m_previews;
};

} // namespace plum::kit
