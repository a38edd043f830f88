#include "store_site.h"

#include "store/protocol/package_link.h"
#include "template_text.h"

#include <QFile>
#include <QLocale>
#include <QUrl>

#include <map>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QByteArray siteFile(const QString &name)
{
    QFile file(u":/site/"_s + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString part(const QString &name)
{
    return QString::fromUtf8(siteFile(name));
}

QString encoded(const QString &name)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(name));
}

QString sizeText(qsizetype bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

// The picture of an app that brings none: its first letter on a colour that its name chooses.
QByteArray letterIcon(const QString &name)
{
    int sum = 0;
    for (const QChar c : name)
        sum = sum * 31 % 360 + c.unicode();
    return fillTemplate(part(u"letter.svg"_s),
        {{u"hue"_s, QString::number(sum % 360)}, {u"letter"_s, name.first(1).toUpper()}})
        .toUtf8();
}

QString iconFile(const PublishedApp &app)
{
    return app.icon.isEmpty() ? u"icon.svg"_s : app.iconFile;
}

QString appFolder(const PublishedApp &app)
{
    return "plum/apps/"_L1 + app.name;
}

// The script's comments in a quieter colour.
QString scriptHtml(const QString &script)
{
    QString html;
    const QStringList lines = QString(script).remove(u'\r').split(u'\n');
    for (const QString &line : lines) {
        const QString text = line.toHtmlEscaped();
        html += line.startsWith("//"_L1) ? u"<i>"_s + text + u"</i>\n"_s : text + u'\n';
    }
    return html.trimmed();
}

// What the page says on its use, below the line that goes for every app. A guide that is the summary has been
// read already.
QString guideHtml(const PublishedApp &app)
{
    if (app.guide == app.summary && !app.guide.isEmpty())
        return {};
    const QString text = app.guide.toHtmlEscaped();
    if (app.guideIsAddress())
        return u"<p><a href=\"%1\" target=\"_blank\" rel=\"noopener\">%1</a></p>"_s.arg(text);
    return u"<p>%1</p>"_s.arg(text.isEmpty() ? u"This app brings no guide."_s : text);
}

// A way to install a package, or why there is none.
QString installHtml(const PublishedApp &app, const StoreIndex &index, const QString &address, bool isBig)
{
    if (index.revocationOf(app.checksum) != nullptr)
        return u"<span class=\"takenBack\">Taken back</span>"_s;
    return u"<a class=\"install%1\" href=\"%2\" aria-label=\"Install %3\">Install</a>"_s.arg(
        isBig ? u" big"_s : QString(), address.toHtmlEscaped(), app.title.toHtmlEscaped());
}

QString takenBackHtml(const PublishedApp &app, const StoreIndex &index)
{
    const Revocation *revocation = index.revocationOf(app.checksum);
    return revocation == nullptr ? QString()
                                 : u"<p class=\"takenBack\">This version was taken back. %1</p>"_s.arg(
                                     revocation->reason.toHtmlEscaped());
}

QString sheetHtml(const PublishedApp &app)
{
    QString rows;
    for (const QString &sentence : app.sheetSentences)
        rows += u"<li>%1</li>\n"_s.arg(sentence.toHtmlEscaped());
    return rows.isEmpty() ? QString()
                          : u"<section>\n<h2>What it may do</h2>\n<ul>\n%1</ul>\n</section>"_s.arg(rows);
}

QString encodedPath(const QString &path)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

// Versions that can still be had.
QString olderHtml(const PublishedApp &app, const StoreIndex &index, const QString &downloadBase)
{
    QString rows;
    for (const IndexedPackage &each : index.older) {
        if (each.name == app.name && index.revocationOf(each.checksum) == nullptr)
            rows += u"<li><a href=\"%1\">Version %2</a></li>\n"_s.arg(
                (downloadBase + encodedPath(each.path)).toHtmlEscaped(), each.version.toHtmlEscaped());
    }
    return rows.isEmpty() ? QString()
                          : u"<section>\n<h2>Older versions</h2>\n<ul>\n%1</ul>\n</section>"_s.arg(rows);
}

TemplateValues valuesOf(const PublishedApp &app, const StoreIndex &index, const QString &downloadBase)
{
    const QString package = downloadBase + encoded(app.name) + packageEnding;
    const QString folder = u"/plum/apps/"_s + encoded(app.name);
    return {
        {u"name"_s, app.name},
        {u"title"_s, app.title},
        {u"summary"_s, app.summary},
        {u"category"_s, app.category},
        {u"guide"_s, guideHtml(app)},
        {u"script"_s, scriptHtml(app.script)},
        {u"files"_s, app.package.files.join(u", "_s)},
        {u"size"_s, sizeText(app.package.content.size())},
        {u"sha256"_s, QString::fromLatin1(app.checksum.toHex())},
        {u"page"_s, folder + u"/index.html"_s},
        {u"icon"_s, folder + u'/' + iconFile(app)},
        {u"version"_s, app.version},
        {u"sheet"_s, sheetHtml(app)},
        {u"older"_s, olderHtml(app, index, downloadBase)},
        {u"takenBack"_s, takenBackHtml(app, index)},
        {u"install"_s, installHtml(app, index, package, false)},
        {u"bigInstall"_s, installHtml(app, index, package, true)},
    };
}

QByteArray page(const QString &title, const QString &place, const QString &content)
{
    TemplateValues values{{u"title"_s, title}, {u"content"_s, content}};
    for (const auto *name : {"store", "about", "help"}) {
        const QString key = QString::fromLatin1(name);
        values.insert(key, place == key ? u" aria-current=\"page\""_s : QString());
    }
    return fillTemplate(part(u"page.html"_s), values).toUtf8();
}

QByteArray catalogue(
    const std::vector<PublishedApp> &apps, const StoreIndex &index, const QString &downloadBase)
{
    std::map<QString, QString> cards; // by category
    const QString card = part(u"card.html"_s);
    for (const PublishedApp &app : apps)
        cards[app.category] += fillTemplate(card, valuesOf(app, index, downloadBase));

    QString sections;
    QString links;
    int number = 0;
    for (const auto &[category, content] : cards) {
        const QString anchor = u"category%1"_s.arg(++number);
        const TemplateValues values{{u"category"_s, category}, {u"anchor"_s, anchor}, {u"cards"_s, content}};
        sections += fillTemplate(part(u"category.html"_s), values);
        links += fillTemplate(u"<a href=\"#{{anchor}}\">{{category}}</a>\n"_s, values);
    }
    return page(u"Plum store"_s, u"store"_s,
        fillTemplate(part(u"catalogue.html"_s),
            {{u"count"_s, QString::number(apps.size())}, {u"links"_s, links}, {u"sections"_s, sections}}));
}

} // namespace

SiteFiles buildSite(
    const std::vector<PublishedApp> &apps, const StoreIndex &index, const QString &downloadBase)
{
    const QByteArray about = page(u"Plum"_s, u"about"_s, part(u"about.html"_s));
    SiteFiles files{
        {u"index.html"_s, siteFile(u"front.html"_s)},
        {u"plum/index.html"_s, about},
        {u"products/tarnwick_plum/index.html"_s, about},
        {u"topic/tarnwick_plum/index.html"_s, page(u"Plum: help"_s, u"help"_s, part(u"help.html"_s))},
        {u"plum/workflow_in/index.html"_s, catalogue(apps, index, downloadBase)},
        {u"plum/store.css"_s, siteFile(u"store.css"_s)},
        {u"plum/search.js"_s, siteFile(u"search.js"_s)},
        {u"plum/plum.svg"_s, siteFile(u"plum.svg"_s)},
        {downloadFolder + unsignedIndexFile, index.toJson()},
    };
    const QString appPage = part(u"app.html"_s);
    for (const PublishedApp &app : apps) {
        files.emplace_back(appFolder(app) + u"/index.html"_s,
            page(app.title + u" - Plum store"_s, u"store"_s,
                fillTemplate(appPage, valuesOf(app, index, downloadBase))));
        files.emplace_back(
            appFolder(app) + u'/' + iconFile(app), app.icon.isEmpty() ? letterIcon(app.name) : app.icon);
        files.emplace_back(downloadFolder + app.name + packageEnding, app.package.content);
    }
    return files;
}

} // namespace plum
