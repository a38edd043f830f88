#include "engine/text_functions.h"

#include "engine/conversions.h"
#include "engine/run_time_error.h"

#include <QStringList>

namespace plum {

qint16 CountOf(QStringView find, QStringView text)
{
    if (find.isEmpty())
        throw RunTimeError(RunTimeError::DivisionByZero, ErrorCause::EmptySearch);
    qsizetype count = 0;
    for (qsizetype at = text.indexOf(find); at >= 0; at = text.indexOf(find, at + find.size()))
        ++count;
    return toInt16(static_cast<double>(count));
}

QString AfterFirstBlank(const QString &text)
{
    const qsizetype blank = text.indexOf(u' ');
    return blank < 0 ? QString() : text.sliced(blank + 1);
}

QString ParentPath(QString &path, ParentPathMode mode)
{
    path.replace(u'/', u'\\');
    const qsizetype separator = path.lastIndexOf(u'\\');
    if (separator < 0)
        return {};
    return path.first(mode == ParentPathMode::WithSeparator ? separator + 1 : separator);
}

QStringList split(const QString &text, const QString &separator)
{
    if (text.isEmpty())
        return {};
    if (separator.isEmpty())
        return {text};
    return text.split(separator);
}

QString pieceAt(const QStringList &pieces, int index)
{
    if (index < 0 || index >= pieces.size())
        throw RunTimeError(
            RunTimeError::SubscriptOutOfRange, ErrorCause::NoPiece, QString::number(index + 1));
    return pieces[index];
}

QString Piece(const QString &text, const QString &separator, int index)
{
    if (!text.contains(separator))
        return text;
    return pieceAt(split(text, separator), index);
}

QString replaceFrom(const QString &source, const QString &find, const QString &with, qint32 start,
    qint32 count, Qt::CaseSensitivity match)
{
    if (start < 1 || count < -1)
        throw RunTimeError(RunTimeError::InvalidProcedureCall, ErrorCause::StartOrCount);
    if (start > source.size())
        return {};
    QString text = source.sliced(start - 1);
    if (find.isEmpty() || count == 0)
        return text;

    QString result;
    qsizetype copied = 0;
    for (qsizetype at = text.indexOf(find, 0, match); at >= 0 && count != 0;
         at = text.indexOf(find, copied, match)) {
        result += QStringView(text).sliced(copied, at - copied);
        result += with;
        copied = at + find.size();
        if (count > 0)
            --count;
    }
    result += QStringView(text).sliced(copied);
    return result;
}

} // namespace plum
