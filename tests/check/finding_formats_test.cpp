#include "check/finding_formats.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

const QList<CheckedFile> oneFile{{u"a b/main.wf"_s,
    {{.line = 3,
         .column = 7,
         .severity = Severity::Error,
         .rule = u"unknown-command"_s,
         .message = u"No \"x\"."_s},
        {.line = 4,
            .column = 1,
            .severity = Severity::Hint,
            .rule = u"never-read"_s,
            .message = u"Unread."_s}}}};

TEST(FindingFormats, textIsALineEach)
{
    EXPECT_EQ(findingsAsText(oneFile),
        u"a b/main.wf:3:7: error: No \"x\". [unknown-command]\na b/main.wf:4:1: hint: Unread. [never-read]\n"_s);
    EXPECT_EQ(findingsAsText({}), QString());
}

TEST(FindingFormats, jsonIsOneArrayOfObjects)
{
    const QJsonArray array = QJsonDocument::fromJson(findingsAsJson(oneFile)).array();
    ASSERT_EQ(array.size(), 2);
    EXPECT_EQ(array[0].toObject(),
        (QJsonObject{{u"file"_s, u"a b/main.wf"_s}, {u"line"_s, 3}, {u"column"_s, 7},
            {u"severity"_s, u"error"_s}, {u"rule"_s, u"unknown-command"_s}, {u"message"_s, u"No \"x\"."_s}}));
    EXPECT_EQ(array[1].toObject()[u"severity"_s], u"hint"_s);
    EXPECT_EQ(QJsonDocument::fromJson(findingsAsJson({})), QJsonDocument(QJsonArray()));
}

TEST(FindingFormats, sarifNamesRuleLevelAndPlace)
{
    const QJsonObject log = QJsonDocument::fromJson(findingsAsSarif(oneFile)).object();
    EXPECT_EQ(log[u"version"_s], u"2.1.0"_s);
    const QJsonObject result = log[u"runs"_s][0][u"results"_s][0].toObject();
    EXPECT_EQ(result[u"ruleId"_s], u"unknown-command"_s);
    EXPECT_EQ(result[u"level"_s], u"error"_s);
    const QJsonValue place = result[u"locations"_s][0][u"physicalLocation"_s];
    EXPECT_EQ(place[u"artifactLocation"_s][u"uri"_s], u"a%20b/main.wf"_s);
    EXPECT_EQ(place[u"region"_s][u"startColumn"_s], 7);
    EXPECT_EQ(log[u"runs"_s][0][u"results"_s][1][u"level"_s], u"note"_s);
}

} // namespace
} // namespace plum
