#include "library/keyword_rules.h"

#include "platform/device_names.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView forbiddenCharacters = u"\\/:*?\"<|>";
constexpr qsizetype longestName = 255; // bytes in UTF-8, what every system's folders can hold

struct FaultMessage
{
    KeywordFault fault;
    const char *text;
};

constexpr std::array messages{
    FaultMessage{KeywordFault::None, ""},
    FaultMessage{KeywordFault::Empty, "Keyword is required"},
    FaultMessage{KeywordFault::Forbidden, "Can not exist *[\\/:*?\"<|>]*"},
    FaultMessage{KeywordFault::Device,
        QT_TRANSLATE_NOOP("plum::KeywordFault", "This name stands for a device and cannot be a keyword.")},
    FaultMessage{KeywordFault::EndIsLost,
        QT_TRANSLATE_NOOP("plum::KeywordFault", "A keyword cannot end in a blank or a dot.")},
    FaultMessage{KeywordFault::TooLong,
        QT_TRANSLATE_NOOP("plum::KeywordFault", "This keyword is too long for the name of a folder.")},
};

} // namespace

KeywordFault keywordFault(QStringView keyword, FileNames names)
{
    const auto isForbidden = [](QChar c) { return c < u' ' || forbiddenCharacters.contains(c); };
    if (keyword.isEmpty())
        return KeywordFault::Empty;
    if (keyword == "."_L1 || keyword == ".."_L1 || std::any_of(keyword.cbegin(), keyword.cend(), isForbidden))
        return KeywordFault::Forbidden;
    if (keyword.toUtf8().size() > longestName)
        return KeywordFault::TooLong;
    if (names == FileNames::Kept)
        return KeywordFault::None;
    if (isDeviceName(keyword))
        return KeywordFault::Device;
    return keyword.endsWith(u' ') || keyword.endsWith(u'.') ? KeywordFault::EndIsLost : KeywordFault::None;
}

QString keywordMessage(KeywordFault fault)
{
    return QCoreApplication::translate(
        "plum::KeywordFault", std::ranges::find(messages, fault, &FaultMessage::fault)->text);
}

bool isFolderName(QStringView keyword)
{
    return !keyword.isEmpty() && keyword != "."_L1 && keyword != ".."_L1 && !keyword.contains(u'/')
        && !keyword.contains(u'\\') && !keyword.contains(QChar(0));
}

} // namespace plum
