#include "helpers/browser/page_file.h"

#include <QDir>
#include <QTemporaryFile>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr char utf8Mark[] = "\xEF\xBB\xBF"; // browsers believe it before anything in the page

} // namespace

QUrl writePageFile(const QString &html)
{
    QTemporaryFile file(QDir::tempPath() + u"/plum-page-XXXXXX.html"_s);
    file.setAutoRemove(false);
    const QByteArray bytes = utf8Mark + html.toUtf8();
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush())
        return {};
    return QUrl::fromLocalFile(file.fileName());
}

} // namespace plum
