#include "kit/upgrade_command.h"

#include "kit/run_options.h"
#include "upgrade/script_upgrade.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace plum::kit {

namespace {

constexpr qint64 largestScript = qint64(1) << 24; // bytes; nobody writes longer ones

int refuse(const QString &path, const char *reason)
{
    std::fprintf(stderr, "plumkit: %s %s\n", qUtf8Printable(path), reason);
    return Unusable;
}

} // namespace

int upgradeScript(const AppOptions &options, const ScriptVocabulary &vocabulary)
{
    QFile file(options.name);
    if (!file.open(QIODevice::ReadOnly) || file.isSequential())
        return refuse(options.name, "cannot be read");
    const QByteArray content = file.read(largestScript + 1);
    if (content.size() > largestScript)
        return refuse(options.name, "is too large for a script");
    const upgrade::Upgraded upgraded
        = upgrade::upgrade(content, QFileInfo(options.name).absolutePath(), vocabulary);
    if (upgraded.refusal) {
        std::fprintf(stderr, "%s:%d:1: %s\n", qUtf8Printable(options.name), upgraded.refusal->line,
            qUtf8Printable(upgraded.refusal->reason));
        return Failed;
    }
    const QByteArray bytes = upgraded.script.toUtf8();
    if (options.place.isEmpty()) {
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
        return Done;
    }
    QSaveFile output(options.place);
    if (!output.open(QIODevice::WriteOnly) || output.write(bytes) != bytes.size() || !output.commit())
        return refuse(options.place, "cannot be written");
    return Done;
}

} // namespace plum::kit
