#pragma once

#include <QString>

namespace plum {

// The small text functions of the script language. Lengths and positions count UTF-16 code units.

// Occurrences of `find` in `text` that do not overlap. More than 32767 raise an overflow (6), an empty
// `find` a division by zero (11).
qint16 CountOf(QStringView find, QStringView text);

// The text after the first blank; empty when there is no blank.
QString AfterFirstBlank(const QString &text);

enum class ParentPathMode {
    WithSeparator = 0,
    WithoutSeparator = 1,
};

// The part of `path` before its last "\" (mode 1), or up to and including it (mode 0); empty when it has
// none. Every "/" of the caller's `path` becomes "\" first.
QString ParentPath(QString &path, ParentPathMode mode);

// The 0-based field `index` of `text` split at `separator`; `text` itself, whatever the index, when the
// separator does not occur. Nothing is unquoted or expanded. An index beyond the fields raises a subscript
// error (9).
QString Piece(const QString &text, const QString &separator, int index);

// `text` split at `separator`, which may be empty: then the whole text is the one piece. The empty text has
// no pieces at all, so every index into the result is a subscript error for the caller to raise.
QStringList split(const QString &text, const QString &separator);

// `pieces[index]`; a subscript error (9) when there is no such piece.
QString pieceAt(const QStringList &pieces, int index);

// The replace function of the classic basic library: searches from the 1-based `start`, replaces at most
// `count` occurrences (-1 for all), and returns the text from `start` on. A start beyond the text gives
// the empty text; a start below 1 or a count below -1 raises an invalid call (5).
QString replaceFrom(const QString &source, const QString &find, const QString &with, qint32 start,
    qint32 count, Qt::CaseSensitivity match);

// How a comma inside one argument travels from the run loop to the argument reader.
inline constexpr QLatin1StringView commaEscape("_,_");
inline constexpr QLatin1StringView commaPlaceholder("tarnwick_dou_");

} // namespace plum
