#include "published_app.h"

#include "store/protocol/package_link.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
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

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    if (!QFileInfo(root.filePath(scriptFile)).isFile()) {
        problem = u"%1: there is no main.wf"_s.arg(folder);
        return std::nullopt;
    }
    std::optional<AppArchive> package = archiveOf(folder, problem);
    if (!package)
        return std::nullopt;
    app.package = std::move(*package);
    app.script = QString::fromUtf8(contentOf(root.filePath(scriptFile)));
    const QByteArray about = contentOf(root.filePath(u"about.json"_s));
    for (const QString &name : std::as_const(app.package.files)) {
        if (app.icon.isEmpty() && std::ranges::find(iconFiles, name) != std::end(iconFiles)) {
            app.iconFile = name;
            app.icon = contentOf(root.filePath(name));
        }
    }
    app.guide = guideOf(app.script);
    readAbout(about, app);
    if (!app.version.isEmpty() && !isVersion(app.version)) {
        problem
            = u"%1: a version has letters, digits and . + - _ alone, 32 at most, and does not begin with a sign"_s
                  .arg(folder);
        return std::nullopt;
    }
    app.checksum = QCryptographicHash::hash(app.package.content, QCryptographicHash::Sha256);
    return app;
}

} // namespace plum
