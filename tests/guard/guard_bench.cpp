#include "guard/guard_bench.h"

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "sheet/sheet_json.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <gtest/gtest.h>

namespace plum::test {

using namespace Qt::StringLiterals;

GuardBench::GuardBench()
    : m_before(QDir::currentPath())
{
    bench.platform.paths().folder = folder.path();
    bench.platform.shell().desktop = path(u"desktop"_s);
    QDir(folder.path()).mkpath(u"config/apps/x"_s);
    QDir(folder.path()).mkpath(u"config/load"_s);
    QDir(folder.path()).mkpath(u"desktop"_s);
    // Apps are opened by paths relative to the program folder.
    QDir::setCurrent(folder.path());
}

GuardBench::~GuardBench()
{
    QDir::setCurrent(m_before);
}

void GuardBench::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(path(name).section(u'/', 0, -2));
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

QByteArray GuardBench::content(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void GuardBench::run(const QStringList &lines, const char *json)
{
    const QByteArray script = lines.join(u"\r\n"_s).toUtf8();
    if (json) {
        const auto sheet = sheetFromJson(QJsonDocument::fromJson(json).object());
        ASSERT_TRUE(sheet) << json;
        granted = *sheet;
    } else {
        const ComputedSheet computed = computeSheet({.script = script}, bench.system.vocabulary());
        granted = computed.sheet;
        problem = computed.problem;
    }
    bench.system.starts().setLimits([this](const QString &keyword, const QByteArray &) {
        auto limit = std::make_shared<GrantedLimit>();
        limit->keyword = keyword;
        limit->sheet = granted;
        return limit;
    });
    start(lines);
}

void GuardBench::runUnlimited(const QStringList &lines)
{
    bench.system.starts().setLimits({});
    start(lines);
}

void GuardBench::start(const QStringList &lines)
{
    write(u"config/apps/x/main.wf"_s, lines.join(u"\r\n"_s).toUtf8());
    refused.clear();
    error.clear();
    bench.platform.log.clear();
    try {
        bench.system.starts().runApp(u"x"_s, RunStart::ScriptPath::Remembered);
    } catch (const ScriptError &failure) {
        error = failure.mistakes().front().reason;
    } catch (const RunTimeError &failure) {
        error = failure.description();
    }
}

} // namespace plum::test
