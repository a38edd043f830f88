#include "sheet/sheet_sentences.h"

#include "sheet/objects.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 80; // characters of a script's own
constexpr qsizetype mostObjects = 6;

// Sentences are in the language of the session.
struct Words
{
    Q_DECLARE_TR_FUNCTIONS(plum::Sheet)
};

// How an effect is said. In the sentence %1 is what it is about.
struct Phrase
{
    Effect effect;
    const char *sentence;
    const char *anything;
    const char *given;
    const char *deed; // what a run was not allowed
};

constexpr std::array phrases{
    Phrase{Effect::SeeScreen, QT_TRANSLATE_NOOP("plum::Sheet", "Sees the screen."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "looking at the screen")},
    Phrase{Effect::SeeClipboard, QT_TRANSLATE_NOOP("plum::Sheet", "Reads the text on the clipboard."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "reading the clipboard")},
    Phrase{Effect::SeeWindows, QT_TRANSLATE_NOOP("plum::Sheet", "Sees which windows are open, and where."),
        "", "", QT_TRANSLATE_NOOP("plum::Sheet", "looking at windows")},
    Phrase{Effect::SeePointer, QT_TRANSLATE_NOOP("plum::Sheet", "Sees where the mouse pointer is."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "looking where the pointer is")},
    Phrase{Effect::ReadFile, QT_TRANSLATE_NOOP("plum::Sheet", "Reads %1."),
        QT_TRANSLATE_NOOP("plum::Sheet", "any file that you can read"),
        QT_TRANSLATE_NOOP("plum::Sheet", "the file that you type or drop"),
        QT_TRANSLATE_NOOP("plum::Sheet", "reading %1")},
    Phrase{Effect::WriteFile, QT_TRANSLATE_NOOP("plum::Sheet", "Writes %1."),
        QT_TRANSLATE_NOOP("plum::Sheet", "any file that you can write"),
        QT_TRANSLATE_NOOP("plum::Sheet", "the file that you type or drop"),
        QT_TRANSLATE_NOOP("plum::Sheet", "writing %1")},
    Phrase{Effect::Contact, QT_TRANSLATE_NOOP("plum::Sheet", "Contacts %1."),
        QT_TRANSLATE_NOOP("plum::Sheet", "any server"),
        QT_TRANSLATE_NOOP("plum::Sheet", "the address that you type"),
        QT_TRANSLATE_NOOP("plum::Sheet", "contacting %1")},
    Phrase{Effect::Keys, QT_TRANSLATE_NOOP("plum::Sheet", "Presses keys%1."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "pressing keys")},
    Phrase{Effect::Paste, QT_TRANSLATE_NOOP("plum::Sheet", "Types %1."),
        QT_TRANSLATE_NOOP("plum::Sheet", "text"), QT_TRANSLATE_NOOP("plum::Sheet", "what you type"),
        QT_TRANSLATE_NOOP("plum::Sheet", "typing")},
    Phrase{Effect::Mouse, QT_TRANSLATE_NOOP("plum::Sheet", "Moves the mouse and clicks%1."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "moving the mouse or clicking")},
    Phrase{Effect::SetClipboard, QT_TRANSLATE_NOOP("plum::Sheet", "Puts text on the clipboard."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "changing the clipboard")},
    Phrase{Effect::ChangeWindows, QT_TRANSLATE_NOOP("plum::Sheet", "Moves, hides or closes %1."),
        QT_TRANSLATE_NOOP("plum::Sheet", "windows of other programs"),
        QT_TRANSLATE_NOOP("plum::Sheet", "the window that you name"),
        QT_TRANSLATE_NOOP("plum::Sheet", "changing windows")},
    Phrase{Effect::Run, QT_TRANSLATE_NOOP("plum::Sheet", "Starts or opens %1."),
        QT_TRANSLATE_NOOP("plum::Sheet", "any program: it can then do everything that you can"),
        QT_TRANSLATE_NOOP("plum::Sheet", "what you type or drop"),
        QT_TRANSLATE_NOOP("plum::Sheet", "starting %1")},
    Phrase{Effect::Evaluate,
        QT_TRANSLATE_NOOP(
            "plum::Sheet", "Evaluates JavaScript, which on Windows can do everything that you can."),
        "", "", QT_TRANSLATE_NOOP("plum::Sheet", "evaluating JavaScript")},
    Phrase{Effect::LockScreen, QT_TRANSLATE_NOOP("plum::Sheet", "Locks the screen."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "locking the screen")},
    Phrase{Effect::SwitchMonitorOff, QT_TRANSLATE_NOOP("plum::Sheet", "Switches the monitor off."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "switching the monitor off")},
    Phrase{Effect::LogOff, QT_TRANSLATE_NOOP("plum::Sheet", "Logs you off without asking programs."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "logging you off")},
    Phrase{Effect::ShutDown,
        QT_TRANSLATE_NOOP("plum::Sheet", "Switches the machine off without asking programs."), "", "",
        QT_TRANSLATE_NOOP("plum::Sheet", "switching the machine off")},
    Phrase{Effect::Restart, QT_TRANSLATE_NOOP("plum::Sheet", "Restarts the machine without asking programs."),
        "", "", QT_TRANSLATE_NOOP("plum::Sheet", "restarting the machine")},
};

const Phrase &phraseOf(Effect effect)
{
    return *std::ranges::find(phrases, effect, &Phrase::effect);
}

QString shown(const QString &text)
{
    QString plain;
    for (const QChar c : text.simplified()) {
        const QChar::Category category = c.category();
        if (category != QChar::Other_Control && category != QChar::Other_Format)
            plain += c;
    }
    if (plain.size() > longestText)
        plain = plain.first(longestText / 2) + u'…' + plain.last(longestText / 2);
    return plain;
}

// Chinese has no blanks between words, but one stands between it and letters or digits that are none of its
// own. What is put together may begin and end with either.
QString joined(const QString &left, const QString &right)
{
    if (left.isEmpty() || right.isEmpty())
        return left + right;
    const auto isHan = [](QChar c) { return c.script() == QChar::Script_Han; };
    const auto isNarrow = [](QChar c) { return c.script() == QChar::Script_Latin || c.isDigit(); };
    const QChar before = left.back();
    const QChar behind = right.front();
    const bool meet = (isHan(before) && isNarrow(behind)) || (isNarrow(before) && isHan(behind));
    return meet ? left + u' ' + right : left + right;
}

// A sentence with what it is about in the place of %1.
QString about(const QString &sentence, const QString &things)
{
    const QString place = u"%1"_s;
    const qsizetype at = sentence.indexOf(place);
    return joined(joined(sentence.first(at), things), sentence.sliced(at + place.size()));
}

QString listed(const QStringList &things)
{
    if (things.size() < 2)
        return things.value(0);
    //: Between the things of a list, and before the last.
    const QString first = things.first(things.size() - 1).join(Words::tr(", "));
    return joined(joined(first, Words::tr(" and ")), things.last());
}

QString fileText(const QString &object)
{
    const qsizetype colon = object.indexOf(u':');
    const QString root = object.first(colon + 1);
    QString path = object.sliced(colon + 1);
    const bool isFolder = isFolderObject(object);
    if (isFolder && path.endsWith(u'/'))
        path.chop(1);
    if (root == "app:"_L1 && path.isEmpty())
        return Words::tr("what is in its own folder");
    if (root == "desktop:"_L1 && path.isEmpty())
        return Words::tr("what is on the desktop");
    const QString app = root == "apps:"_L1 ? shown(path.section(u'/', 0, 0)) : QString();
    if (!app.isEmpty())
        path = path.section(u'/', 1);
    const QString thing = isFolder ? Words::tr("what is in %1").arg(shown(path)) : shown(path);
    if (root == "app:"_L1)
        return Words::tr("%1 in its own folder").arg(thing);
    if (!app.isEmpty())
        return Words::tr("%1 in the folder of the app %2").arg(thing, app);
    if (root == "program:"_L1)
        return Words::tr("%1 in Plum's own folder").arg(thing);
    if (root == "desktop:"_L1)
        return Words::tr("%1 on the desktop").arg(thing);
    return thing;
}

bool isAboutObjects(const Phrase &phrase)
{
    return QByteArrayView(phrase.sentence).contains("%1");
}

QString sentenceOf(const Phrase &phrase, const Scope &scope, const QString &window)
{
    if (!isAboutObjects(phrase))
        return Words::tr(phrase.sentence);
    if (phrase.effect == Effect::Keys || phrase.effect == Effect::Mouse)
        return Words::tr(phrase.sentence)
            .arg(window.isEmpty() ? QString() : Words::tr(" in the window %1").arg(shown(window)));
    QStringList things;
    if (scope.anything) {
        things += Words::tr(phrase.anything);
    } else if (scope.given) {
        things += Words::tr(phrase.given);
    }
    // What is named apart is not part of "any".
    QStringList objects;
    for (const QString &object : scope.objects) {
        if (!scope.anything || !covers(phrase.effect, {.anything = true}, object))
            objects += objectText(phrase.effect, object);
    }
    if (objects.size() > mostObjects) {
        const QString more = Words::tr("%1 others").arg(objects.size() - mostObjects + 1);
        objects = objects.first(mostObjects - 1);
        objects += more;
    }
    return about(Words::tr(phrase.sentence), listed(objects + things));
}

} // namespace

QString objectText(Effect effect, const QString &object)
{
    switch (effect) {
    case Effect::ReadFile:
    case Effect::WriteFile:
        return fileText(object);
    case Effect::Contact:
        return Words::tr("%1, and where that leads").arg(shown(object.sliced(object.indexOf(u':') + 1)));
    case Effect::Run:
        return object.startsWith("name:"_L1) ? shown(object.sliced(5)) : fileText(object);
    default:
        return Words::tr("the window %1").arg(shown(object));
    }
}

QString deedText(Effect effect, const QString &what)
{
    const QString deed = Words::tr(phraseOf(effect).deed);
    return deed.contains("%1"_L1) ? deed.arg(shown(what)) : deed;
}

QStringList sentences(const Sheet &sheet, Sentences which)
{
    QStringList all;
    for (const EffectRow &row : effectRows()) {
        if (const Scope *scope = sheet.find(row.effect))
            all += sentenceOf(phraseOf(row.effect), *scope, sheet.window());
    }
    const bool hasHands = sheet.has(Effect::Keys) || sheet.has(Effect::Paste) || sheet.has(Effect::Mouse);
    if (hasHands && sheet.window().isEmpty())
        all += Words::tr(
            "Keys and clicks go to whatever window is in front: they are as good as your own hands.");
    const Scope *run = sheet.find(Effect::Run);
    if (which == Sentences::Whole && all.isEmpty())
        all += Words::tr("Touches nothing but its own boxes.");
    if (which == Sentences::Whole && !sheet.has(Effect::Contact) && !(run && run->anything))
        all += Words::tr("Contacts nobody.");
    return all;
}

} // namespace plum
