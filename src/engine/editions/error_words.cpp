#include "engine/editions/error_words.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

struct Row
{
    ErrorCause cause;
    QStringView words; // "%1" stands for the culprit
};

constexpr std::array rows{
    Row{ErrorCause::NotANumber, u"\"%1\" is not a number"},
    Row{ErrorCause::NotMilliseconds, u"\"%1\" is not a number of milliseconds"},
    Row{ErrorCause::OutOfRange, u"%1 is out of range"},
    Row{ErrorCause::NotHexadecimal, u"\"%1\" is not two hexadecimal digits"},
    Row{ErrorCause::NotAPoint, u"\"%1\" is not a point, x:y"},
    Row{ErrorCause::NotAnOffset, u"\"%1\" is not an offset, dx:dy"},
    Row{ErrorCause::NotARegion, u"\"%1\" is not a region, x:y:width:height"},
    Row{ErrorCause::NotAHandle, u"\"%1\" is not the number of a window"},
    Row{ErrorCause::NotAColour, u"\"%1\" is not a colour of six hexadecimal digits, RRGGBB"},
    Row{ErrorCause::NoPiece, u"there is no piece %1"},
    Row{ErrorCause::EmptySearch, u"the text to look for is empty"},
    Row{ErrorCause::StartOrCount, u"a text begins with character 1, and a count is 0 or more, or -1 for all"},
    Row{ErrorCause::MissingProgram, u"the system has no \"%1\""},
    Row{ErrorCause::NoTimer, u"the system has no room for another timer"},
};

} // namespace

QString errorWords(ErrorCause cause, const QString &culprit)
{
    const auto row = std::ranges::find(rows, cause, &Row::cause);
    Q_ASSERT(row != rows.end());
    // A culprit may hold a "%1" itself.
    return row->words.toString().replace(QStringLiteral("%1"), culprit);
}

} // namespace plum
