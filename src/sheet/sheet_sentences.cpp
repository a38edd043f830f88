#include "sheet/sheet_sentences.h"

#include "sheet/objects.h"

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 80; // characters of a script's own
constexpr qsizetype mostObjects = 6;

// How an effect is said. In the sentence %1 is what it is about.
struct Phrase
{
    Effect effect;
    QStringView sentence;
    QStringView anything;
    QStringView given;
    QStringView deed; // what a run was not allowed
};

constexpr std::array phrases{
    Phrase{Effect::SeeScreen, u"Sees the screen.", u"", u"", u"looking at the screen"},
    Phrase{Effect::SeeClipboard, u"Reads the text on the clipboard.", u"", u"", u"reading the clipboard"},
    Phrase{Effect::SeeWindows, u"Sees which windows are open, and where.", u"", u"", u"looking at windows"},
    Phrase{
        Effect::SeePointer, u"Sees where the mouse pointer is.", u"", u"", u"looking where the pointer is"},
    Phrase{Effect::ReadFile, u"Reads %1.", u"any file that you can read", u"the file that you type or drop",
        u"reading %1"},
    Phrase{Effect::WriteFile, u"Writes %1.", u"any file that you can write",
        u"the file that you type or drop", u"writing %1"},
    Phrase{Effect::Contact, u"Contacts %1.", u"any server", u"the address that you type", u"contacting %1"},
    Phrase{Effect::Keys, u"Presses keys%1.", u"", u"", u"pressing keys"},
    Phrase{Effect::Paste, u"Types %1.", u"text", u"what you type", u"typing"},
    Phrase{Effect::Mouse, u"Moves the mouse and clicks%1.", u"", u"", u"moving the mouse or clicking"},
    Phrase{Effect::SetClipboard, u"Puts text on the clipboard.", u"", u"", u"changing the clipboard"},
    Phrase{Effect::ChangeWindows, u"Moves, hides or closes %1.", u"windows of other programs",
        u"the window that you name", u"changing windows"},
    Phrase{Effect::Run, u"Starts or opens %1.", u"any program: it can then do everything that you can",
        u"what you type or drop", u"starting %1"},
    Phrase{Effect::Evaluate, u"Evaluates JavaScript, which on Windows can do everything that you can.", u"",
        u"", u"evaluating JavaScript"},
    Phrase{Effect::LockScreen, u"Locks the screen.", u"", u"", u"locking the screen"},
    Phrase{Effect::SwitchMonitorOff, u"Switches the monitor off.", u"", u"", u"switching the monitor off"},
    Phrase{Effect::LogOff, u"Logs you off without asking programs.", u"", u"", u"logging you off"},
    Phrase{Effect::ShutDown, u"Switches the machine off without asking programs.", u"", u"",
        u"switching the machine off"},
    Phrase{Effect::Restart, u"Restarts the machine without asking programs.", u"", u"",
        u"restarting the machine"},
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

QString listed(const QStringList &things)
{
    if (things.size() < 2)
        return things.value(0);
    return things.first(things.size() - 1).join(u", "_s) + u" and "_s + things.last();
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
        return u"what is in its own folder"_s;
    if (root == "desktop:"_L1 && path.isEmpty())
        return u"what is on the desktop"_s;
    QString place;
    if (root == "app:"_L1) {
        place = u" in its own folder"_s;
    } else if (root == "apps:"_L1) {
        place = u" in the folder of the app "_s + shown(path.section(u'/', 0, 0));
        path = path.section(u'/', 1);
    } else if (root == "program:"_L1) {
        place = u" in Plum's own folder"_s;
    } else if (root == "desktop:"_L1) {
        place = u" on the desktop"_s;
    }
    return (isFolder ? u"what is in "_s : QString()) + shown(path) + place;
}

bool isAboutObjects(const Phrase &phrase)
{
    return phrase.sentence.contains(u"%1");
}

QString sentenceOf(const Phrase &phrase, const Scope &scope, const QString &window)
{
    if (!isAboutObjects(phrase))
        return phrase.sentence.toString();
    if (phrase.effect == Effect::Keys || phrase.effect == Effect::Mouse)
        return phrase.sentence.arg(window.isEmpty() ? QString() : u" in the window "_s + shown(window));
    QStringList things;
    if (scope.anything) {
        things += phrase.anything.toString();
    } else if (scope.given) {
        things += phrase.given.toString();
    }
    // What is named apart is not part of "any".
    QStringList objects;
    for (const QString &object : scope.objects) {
        if (!scope.anything || !covers(phrase.effect, {.anything = true}, object))
            objects += objectText(phrase.effect, object);
    }
    if (objects.size() > mostObjects) {
        const QString more = u"%1 others"_s.arg(objects.size() - mostObjects + 1);
        objects = objects.first(mostObjects - 1);
        objects += more;
    }
    return phrase.sentence.arg(listed(objects + things));
}

} // namespace

QString objectText(Effect effect, const QString &object)
{
    switch (effect) {
    case Effect::ReadFile:
    case Effect::WriteFile:
        return fileText(object);
    case Effect::Contact:
        return shown(object.sliced(object.indexOf(u':') + 1)) + u", and where that leads"_s;
    case Effect::Run:
        return object.startsWith("name:"_L1) ? shown(object.sliced(5)) : fileText(object);
    default:
        return u"the window "_s + shown(object);
    }
}

QString deedText(Effect effect, const QString &what)
{
    const QStringView deed = phraseOf(effect).deed;
    return deed.contains(u"%1") ? deed.arg(shown(what)) : deed.toString();
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
        all += u"Keys and clicks go to whatever window is in front: they are as good as your own hands."_s;
    const Scope *run = sheet.find(Effect::Run);
    if (which == Sentences::Whole && all.isEmpty())
        all += u"Touches nothing but its own boxes."_s;
    if (which == Sentences::Whole && !sheet.has(Effect::Contact) && !(run && run->anything))
        all += u"Contacts nobody."_s;
    return all;
}

} // namespace plum
