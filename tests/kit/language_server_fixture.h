#pragma once

#include "kit/lsp/language_server.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum::kit {

using namespace Qt::StringLiterals;

inline const QString scriptAddress = u"file:///apps/x/main.wf"_s;

class LanguageServers : public testing::Test
{
protected:
    QJsonObject notify(const QString &method, const QJsonObject &parameters)
    {
        const QList<QJsonObject> answers = server.answer({{u"method"_s, method}, {u"params"_s, parameters}});
        return answers.isEmpty() ? QJsonObject() : answers.front();
    }

    QJsonObject open(const QString &text)
    {
        return notify(u"textDocument/didOpen"_s,
            {{u"textDocument"_s, QJsonObject{{u"uri"_s, address}, {u"text"_s, text}}}});
    }

    QJsonObject request(const QString &method, const QJsonObject &parameters = {})
    {
        const QList<QJsonObject> answers
            = server.answer({{u"id"_s, 7}, {u"method"_s, method}, {u"params"_s, parameters}});
        EXPECT_EQ(answers.size(), 1);
        EXPECT_EQ(answers.value(0)[u"id"_s], 7);
        return answers.value(0);
    }

    QJsonObject at(int line, int character) const
    {
        return {{u"textDocument"_s, QJsonObject{{u"uri"_s, address}}},
            {u"position"_s, QJsonObject{{u"line"_s, line}, {u"character"_s, character}}}};
    }

    QStringList completion(int line, int character)
    {
        QStringList labels;
        for (const QJsonValue &item :
            request(u"textDocument/completion"_s, at(line, character))[u"result"_s].toArray())
            labels += item[u"label"_s].toString();
        return labels;
    }

    // "line:from-to severity rule"
    static QStringList places(const QJsonObject &published)
    {
        QStringList found;
        for (const QJsonValue &item : published[u"params"_s][u"diagnostics"_s].toArray()) {
            const QJsonValue range = item[u"range"_s];
            found += u"%1:%2-%3 %4 %5"_s.arg(range[u"start"_s][u"line"_s].toInt())
                         .arg(range[u"start"_s][u"character"_s].toInt())
                         .arg(range[u"end"_s][u"character"_s].toInt())
                         .arg(item[u"severity"_s].toInt())
                         .arg(item[u"code"_s].toString());
        }
        return found;
    }

    QString address = scriptAddress;
    LanguageServer server{recording::ScriptBench().system.vocabulary()};
};

} // namespace plum::kit
