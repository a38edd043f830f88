#include "check/field_words.h"

#include "check/findings/check_words.h"

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

QString commandWords(QStringView english)
{
    return QCoreApplication::translate("plum::CommandWords", english.toUtf8().constData());
}

QString kindInWords(const Field &field)
{
    QStringList words;
    if (field.kind == FieldKind::Choice) {
        for (const CommandInfo &choice : field.choices())
            words += choice.word.toString();
        if (field.takesNumber)
            words += commandWords(u"a number");
        if (field.takesVariable)
            words += commandWords(u"the name of a variable");
        if (!words.isEmpty())
            return words.join(CheckWords::tr(", "));
    }
    const auto found = std::ranges::find(kindWords, field.kind, &KindWords::kind);
    return found == kindWords.end() ? QString() : commandWords(found->words);
}

QString fieldInWords(const Field &field)
{
    QString line = u"%1: %2"_s.arg(field.name.toString(), kindInWords(field));
    if (field.mayRepeat)
        line += CheckWords::tr("; any number of them");
    if (!field.fallback.isEmpty())
        line += CheckWords::tr("; empty: %1").arg(commandWords(field.fallback));
    else if (field.mayBeMissing)
        line += CheckWords::tr("; may be left out");
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
