#include "check/field_words.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct KindWords
{
    FieldKind kind;
    QStringView words;
};

constexpr std::array kindWords{
    KindWords{FieldKind::Text, u"a text"},
    KindWords{FieldKind::Variable, u"the name of a variable"},
    KindWords{FieldKind::Number, u"a number"},
    KindWords{FieldKind::Milliseconds, u"milliseconds"},
    KindWords{FieldKind::Point, u"a point x:y"},
    KindWords{FieldKind::Offset, u"an offset dx:dy"},
    KindWords{FieldKind::Region, u"a region x:y:width:height"},
    KindWords{FieldKind::Choice, u"a word"},
    KindWords{FieldKind::Handle, u"the number of a window"},
    KindWords{FieldKind::KeyName, u"a key"},
    KindWords{FieldKind::KeyList, u"keys with commas between them"},
    KindWords{FieldKind::Path, u"a path"},
    KindWords{FieldKind::Colour, u"a colour RRGGBB"},
    KindWords{FieldKind::Url, u"an address"},
};

} // namespace

QString kindInWords(const Field &field)
{
    QStringList words;
    if (field.kind == FieldKind::Choice) {
        for (const CommandInfo &choice : field.choices())
            words += choice.word.toString();
        if (field.takesNumber)
            words += u"a number"_s;
        if (field.takesVariable)
            words += u"the name of a variable"_s;
        if (!words.isEmpty())
            return words.join(u", "_s);
    }
    const auto found = std::ranges::find(kindWords, field.kind, &KindWords::kind);
    return found == kindWords.end() ? QString() : found->words.toString();
}

QString fieldInWords(const Field &field)
{
    QString line = u"%1: %2"_s.arg(field.name.toString(), kindInWords(field));
    if (field.mayRepeat)
        line += u"; any number of them"_s;
    if (!field.fallback.isEmpty())
        line += u"; empty: %1"_s.arg(field.fallback);
    else if (field.mayBeMissing)
        line += u"; may be left out"_s;
    return line;
}

QString usageOf(const QString &head, std::span<const Field> fields)
{
    QStringList names;
    for (const Field &field : fields) {
        const QString name = field.name.toString() + (field.mayRepeat ? u"…"_s : QString());
        names += field.isRequired() ? name : u'[' + name + u']';
    }
    return names.isEmpty() ? head : head + u' ' + names.join(u',');
}

} // namespace plum
