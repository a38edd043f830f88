// What a run does is part of what its sheet says: over random scripts, every example of the manual and every
// app that comes with Plum. A run under its own sheet is refused nothing and does the same as one without a
// limit; and what the recording backend saw is on the sheet, by a table that knows nothing of how sheets are
// computed.
#include "check/random_edition2_scripts.h"
#include "check/random_scripts.h"
#include "guard/guard_bench.h"
#include "sheet/objects.h"
#include "support/manual_examples.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

struct Seen
{
    QStringView event; // how it begins
    QList<Effect> effects; // one of them is on the sheet
};

const QList<Seen> &seenTable()
{
    using enum Effect;
    static const QList<Seen> table{
        {u"mouse ", {Mouse}},
        {u"move ", {Mouse}},
        {u"key ", {Keys, Paste}},
        {u"type ", {Keys}},
        {u"clipboard ", {SetClipboard, Paste}},
        {u"window ", {ChangeWindows}},
        {u"get ", {Contact}},
        {u"request ", {Contact}},
        {u"post ", {Contact}},
        {u"open ", {Run, Contact}},
        {u"run ", {Run}},
        {u"javascript ", {Evaluate}},
        {u"helper ", {Contact, Run}},
        {u"session lock", {LockScreen}},
        {u"session monitor off", {SwitchMonitorOff}},
        {u"session log off", {LogOff}},
        {u"session shut down", {ShutDown}},
        {u"session restart", {Restart}},
    };
    return table;
}

void expectOnSheet(const QStringList &events, const Sheet &sheet)
{
    for (const QString &event : events) {
        for (const Seen &seen : seenTable()) {
            // A page without markup reaches nobody.
            const bool isPlainPage = event.startsWith(u"helper "_s) && !event.contains(u'<')
                && !event.contains(u"_tarnwick_url_"_s) && !event.contains(u"@@@"_s);
            if (!event.startsWith(seen.event) || isPlainPage)
                continue;
            bool isOnSheet = false;
            for (const Effect effect : seen.effects)
                isOnSheet = isOnSheet || sheet.has(effect);
            EXPECT_TRUE(isOnSheet) << event.toStdString();
            if (event.startsWith(u"get "_s)) {
                const Scope scope = *sheet.find(Effect::Contact);
                const QString host = hostObject(event.sliced(4)).value_or(QString());
                EXPECT_TRUE(scope.anything || scope.given || scope.objects.contains(host))
                    << event.toStdString();
            }
        }
    }
}

struct Endless
{
};

class ObservedIsDeclared : public testing::Test
{
protected:
    ObservedIsDeclared()
    {
        app.bench.launcher.keywordBox = u"x hello,world"_s;
        app.bench.platform.clipboard().content = u"clip"_s;
        app.bench.waiter.onWait = [this] {
            if (++m_waits > 5000)
                throw Endless();
        };
    }

    void judge(const QStringList &script)
    {
        SCOPED_TRACE(script.join(u'\n').toStdString());
        run([&] { app.runUnlimited(script); });
        const QStringList events = app.events();
        const QString error = app.error;
        const bool hasWritten = somethingIsWritten();
        clean();
        run([&] { app.run(script); });
        EXPECT_TRUE(app.refused.isEmpty()) << app.refused.join(u'\n').toStdString();
        EXPECT_EQ(app.events(), events);
        EXPECT_EQ(app.error, error);
        expectOnSheet(events, app.granted);
        EXPECT_TRUE(!hasWritten || app.granted.has(Effect::WriteFile));
        clean();
        m_judged += 1;
    }

    template <typename Do> void run(Do go)
    {
        m_waits = 0;
        QFile dropped(elsewhere.filePath(u"dropped.txt"_s));
        EXPECT_TRUE(dropped.open(QIODevice::WriteOnly) && dropped.write(droppedText) > 0);
        app.bench.state.droppedPath = dropped.fileName();
        app.bench.state.vardict.removeAll();
        app.bench.state.answers.clear();
        app.bench.platform.clipboard().content = u"clip"_s;
        app.bench.platform.pointer().at = {};
        try {
            go();
        } catch (const Endless &) {
        }
    }

    bool somethingIsWritten() const
    {
        QFile dropped(elsewhere.filePath(u"dropped.txt"_s));
        return QDir(elsewhere.path()).count() != 3 || !QDir(app.folder.path()).isEmpty(QDir::Files)
            || !QDir(app.path(u"desktop"_s)).isEmpty()
            || QDir(app.path(u"config/apps/x"_s)).entryList(QDir::Files) != QStringList{u"main.wf"_s}
        || !dropped.open(QIODevice::ReadOnly) || dropped.readAll() != droppedText;
    }

    // What a run has written is not to be there for the next.
    void clean()
    {
        for (const QString &folder :
            {app.path(u"desktop"_s), app.path(u"config/apps/x"_s), elsewhere.path()}) {
            QDir(folder).removeRecursively();
            QDir().mkpath(folder);
        }
        for (const QString &file : QDir(app.folder.path()).entryList(QDir::Files))
            QFile::remove(app.path(file));
    }

    test::GuardBench app;
    QTemporaryDir elsewhere;
    int m_judged = 0;

private:
    static constexpr char droppedText[] = "dropped";
    int m_waits = 0;
};

TEST_F(ObservedIsDeclared, overRandomScripts)
{
    test::RandomScripts scripts(app.bench.system.vocabulary(), 17);
    for (int i = 0; i < 1500 && !HasFailure(); ++i)
        judge(scripts.next());
    EXPECT_EQ(m_judged, 1500);
}

TEST_F(ObservedIsDeclared, overRandomScriptsOfEdition2)
{
    constexpr int most = 400;
    // What is given is never Plum's own.
    app.bench.launcher.keywordBox = u"x %1/hello,%1/world"_s.arg(elsewhere.path());
    test::RandomEdition2Scripts scripts(app.bench.system.vocabulary(), 17);
    int narrow = 0;
    for (int i = 0; i < most && !HasFailure(); ++i) {
        const QStringList script = scripts.next();
        judge(script);
        EXPECT_EQ(app.problem, QString()) << script.join(u'\n').toStdString();
        narrow += app.granted.isEmpty() || app.granted == Sheet::everything() ? 0 : 1;
    }
    EXPECT_EQ(m_judged, most);
    EXPECT_GT(narrow, most * 3 / 4);
}

TEST_F(ObservedIsDeclared, overTheAppsThatComeWithPlum)
{
    const QDir apps(QStringLiteral(PLUM_APPS_FOLDER));
    for (const QString &name : apps.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(apps.filePath(name) + u"/main.wf"_s);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        judge(QString::fromUtf8(file.readAll()).replace(u"\r\n"_s, u"\n"_s).split(u'\n', Qt::SkipEmptyParts));
    }
    EXPECT_GT(m_judged, 10);
}

TEST_F(ObservedIsDeclared, overTheExamplesOfTheManual)
{
    for (const auto page : {recording::ManualPage::Edition1, recording::ManualPage::Edition2}) {
        for (const recording::ManualExample &example : recording::manualExamples(page))
            judge(example.script);
    }
    EXPECT_GT(m_judged, 45);
}

} // namespace
} // namespace plum
