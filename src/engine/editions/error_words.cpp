#include "engine/editions/error_words.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace plum {

namespace {

struct Row
{
    ErrorCause cause;
    const char *words; // "%1" stands for the culprit
};

constexpr std::array rows{
    Row{ErrorCause::NotANumber, QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not a number")},
    Row{ErrorCause::NotMilliseconds,
        QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not a number of milliseconds")},
    Row{ErrorCause::OutOfRange, QT_TRANSLATE_NOOP("plum::ErrorCause", "%1 is out of range")},
    Row{ErrorCause::NotHexadecimal,
        QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not two hexadecimal digits")},
    Row{ErrorCause::NotAPoint, QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not a point, x:y")},
    Row{ErrorCause::NotAnOffset, QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not an offset, dx:dy")},
    Row{ErrorCause::NotARegion,
        QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not a region, x:y:width:height")},
    Row{ErrorCause::NotAHandle,
        QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not the number of a window")},
    Row{ErrorCause::NotAColour,
        QT_TRANSLATE_NOOP("plum::ErrorCause", "\"%1\" is not a colour of six hexadecimal digits, RRGGBB")},
    Row{ErrorCause::NoPiece, QT_TRANSLATE_NOOP("plum::ErrorCause", "there is no piece %1")},
    Row{ErrorCause::EmptySearch, QT_TRANSLATE_NOOP("plum::ErrorCause", "the text to look for is empty")},
    Row{ErrorCause::StartOrCount,
        QT_TRANSLATE_NOOP(
            "plum::ErrorCause", "a text begins with character 1, and a count is 0 or more, or -1 for all")},
    Row{ErrorCause::MissingProgram, QT_TRANSLATE_NOOP("plum::ErrorCause", "the system has no \"%1\"")},
    Row{ErrorCause::NoTimer,
        QT_TRANSLATE_NOOP("plum::ErrorCause", "the system has no room for another timer")},
};

} // namespace

QString errorWords(ErrorCause cause, const QString &culprit)
{
    const auto row = std::ranges::find(rows, cause, &Row::cause);
    Q_ASSERT(row != rows.end());
    // A culprit may hold a "%1" itself.
    return QCoreApplication::translate("plum::ErrorCause", row->words).replace(QStringLiteral("%1"), culprit);
}

} // namespace plum
