#include "library/fixed_texts.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace plum {

namespace {

constexpr std::array fixedTexts{
    QT_TRANSLATE_NOOP("plum::FixedText", "Successfully"),
    QT_TRANSLATE_NOOP("plum::FixedText", "Error"),
    QT_TRANSLATE_NOOP("plum::FixedText", "Keyword is required"),
    QT_TRANSLATE_NOOP("plum::FixedText", "Keyword already exists"),
    QT_TRANSLATE_NOOP("plum::FixedText", "The Keyword already exists, whether it is renamed ?"),
    QT_TRANSLATE_NOOP("plum::FixedText", "Can not exist *[\\/:*?\"<|>]*"),
    QT_TRANSLATE_NOOP("plum::FixedText", "already exists"), // behind a keyword
    QT_TRANSLATE_NOOP("plum::FixedText", "Guide does not exist"),
    QT_TRANSLATE_NOOP("plum::FixedText", "installed successfully"),
    QT_TRANSLATE_NOOP("plum::FixedText", "is editting"), // behind a keyword
    QT_TRANSLATE_NOOP("plum::FixedText", "Hide"),
};

} // namespace

QString meaningOfFixed(QStringView text)
{
    const qsizetype end = text.indexOf(u"\n\n");
    const QStringView heading = end < 0 ? text : text.first(end);
    const auto found = std::ranges::find_if(
        fixedTexts, [heading](const char *fixed) { return heading == QLatin1StringView(fixed); });
    if (found == fixedTexts.end())
        return {};
    const QString meaning = QCoreApplication::translate("plum::FixedText", *found);
    return meaning == heading ? QString() : meaning;
}

} // namespace plum
