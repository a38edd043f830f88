#include "published_app.h"

#include "archive/zip_writer.h"
#include "store/protocol/package_link.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView scriptFile("main.wf");
constexpr QLatin1StringView guideMark("//guide:");
constexpr QLatin1StringView usualCategory("Other");
constexpr QLatin1StringView iconFiles[] = {QLatin1StringView("icon.svg"), QLatin1StringView("icon.png")};

QString guideOf(const QString &script)
{
    const QString firstLine = script.section(u'\n', 0, 0).trimmed();
    return firstLine.startsWith(guideMark) ? firstLine.sliced(guideMark.size()) : QString();
}

// Paths relative to the folder, sorted, so that the same folder always gives the same package. Links are
// left out: a package holds what is in the folder.
QStringList filesBelow(const QString &folder)
{
    QStringList files;
    const QDir root(folder);
    QDirIterator each(
        root.absolutePath(), QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (each.hasNext())
        files += root.relativeFilePath(each.next());
    files.sort();
    return files;
}

// It becomes a folder's name.
bool isVersion(const QString &version)
{
    static const QRegularExpression form(u"^[0-9A-Za-z][0-9A-Za-z.+_-]{0,31}$"_s);
    return form.match(version).hasMatch();
}

void readAbout(const QByteArray &json, PublishedApp &app)
{
    const QJsonObject about = QJsonDocument::fromJson(json).object();
    app.version = about.value("version"_L1).toString();
    app.title = about.value("title"_L1).toString(app.name);
    app.summary = about.value("summary"_L1).toString(app.guideIsAddress() ? QString() : app.guide);
    app.category = about.value("category"_L1).toString(usualCategory);
}

} // namespace

bool PublishedApp::guideIsAddress() const
{
    return guide.startsWith("http://"_L1) || guide.startsWith("https://"_L1);
}

std::optional<PublishedApp> readApp(const QString &folder, QString &problem)
{
    const QDir root(folder);
    PublishedApp app;
    app.name = root.dirName();
    if (!isPackageName(app.name) || app.name.contains(u' ')) {
        problem = u"%1: an app's name must not hold a blank or any of \\ / : * ? \" < | >"_s.arg(folder);
        return std::nullopt;
    }
    app.files = filesBelow(folder);
    if (!app.files.contains(scriptFile)) {
        problem = u"%1: there is no main.wf"_s.arg(folder);
        return std::nullopt;
    }

    ZipWriter archive;
    QByteArray about;
    // Every file has this time, the first that an archive can hold.
    const QDateTime time(QDate(1980, 1, 1), QTime(0, 0));
    for (const QString &name : std::as_const(app.files)) {
        QFile file(root.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            problem = u"%1: %2"_s.arg(file.fileName(), file.errorString());
            return std::nullopt;
        }
        const QByteArray content = file.readAll();
        archive.add(name, content, time);
        if (name == scriptFile)
            app.script = QString::fromUtf8(content);
        else if (name == "about.json"_L1)
            about = content;
        else if (std::ranges::find(iconFiles, name) != std::end(iconFiles) && app.icon.isEmpty()) {
            app.icon = content;
            app.iconFile = name;
        }
    }
    app.package = archive.finish();
    if (app.package.isEmpty()) {
        problem = u"%1: too large for a package"_s.arg(folder);
        return std::nullopt;
    }
    app.guide = guideOf(app.script);
    readAbout(about, app);
    if (!app.version.isEmpty() && !isVersion(app.version)) {
        problem
            = u"%1: a version has letters, digits and . + - _ alone, 32 at most, and does not begin with a sign"_s
                  .arg(folder);
        return std::nullopt;
    }
    app.checksum = QCryptographicHash::hash(app.package, QCryptographicHash::Sha256);
    return app;
}

} // namespace plum
