#include "sheet/effect_collector.h"

#include "engine/helper_programs.h"
#include "sheet/given_text.h"
#include "sheet/objects.h"

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What references learn from outside, and what they are worth.
struct ReferenceRow
{
    QStringView start; // those that end in "_" have a number behind it
    Effect effect;
    bool isGiven;
    QChar folder; // none: U+0000
};

constexpr std::array referenceRows{
    ReferenceRow{u"os.get_clipboard", Effect::SeeClipboard, false, {}},
    ReferenceRow{u"os.path_package_name", Effect::NoEffect, false, {}},
    ReferenceRow{u"os.path_package", Effect::NoEffect, false, appFolderText},
    ReferenceRow{u"os.path_pfold", Effect::NoEffect, false, appFolderText},
    ReferenceRow{u"os.path_desktop", Effect::NoEffect, false, desktopText},
    ReferenceRow{u"me.drag_text", Effect::ReadFile, false, {}},
    ReferenceRow{u"me.drag", Effect::NoEffect, true, {}},
    ReferenceRow{u"me.text_input", Effect::NoEffect, true, {}},
    ReferenceRow{u"me.enter_input", Effect::NoEffect, true, {}},
    ReferenceRow{u"mouse.xy", Effect::SeePointer, false, {}},
};

const ReferenceRow *rowOf(QStringView reference)
{
    const auto row = std::ranges::find_if(referenceRows, [reference](const ReferenceRow &each) {
        return reference == each.start
            || (each.start == u"me.enter_input" && reference.startsWith(each.start));
    });
    return row == referenceRows.end() ? nullptr : &*row;
}

// Texts of a page that has no markup reach nothing.
bool isPlain(const QString &page)
{
    return !page.contains(u'<') && !page.contains(anyText) && !page.startsWith(browserUrlMarker);
}

const CommandEffects *effectsOfChoice(const Field &field, const QString &word)
{
    const QStringView meant = word.isEmpty() ? field.fallback : QStringView(word);
    const auto choices = field.choices();
    const auto choice = std::ranges::find(choices, meant, &CommandInfo::word);
    return choice == choices.end() ? nullptr : &choice->effects;
}

} // namespace

PossibleText valueOfReference(QStringView reference)
{
    if (reference == u"str.r")
        return PossibleText::known(u"\r\n"_s);
    if (reference == u"os.path_ppfold")
        return PossibleText::known(appFolderText + u"/.."_s);
    const ReferenceRow *row = rowOf(reference);
    if (!row)
        return PossibleText::unknown();
    if (row->isGiven)
        return PossibleText::givenByUser();
    return row->folder.isNull() ? PossibleText::unknown() : PossibleText::known(QString(row->folder));
}

PossibleText resultOf(const CommandInfo &info, const EffectCollector::FieldValue &valueOf)
{
    const auto taken = std::ranges::find(info.effects, Effect::TakeGiven, &CommandEffect::effect);
    if (taken == info.effects.end())
        return PossibleText::unknown();
    if (taken->field < 0)
        return PossibleText::givenByUser();
    const PossibleText separator = valueOf(taken->field);
    const bool isPart = !separator.isGiven() && std::ranges::all_of(separator.texts(), separatesLists);
    return isPart ? PossibleText::givenByUser() : PossibleText::unknown();
}

bool mustNameEffects(const CommandInfo &info)
{
    return info.touches == Touches::Desktop || std::ranges::any_of(info.usedFields(), [](const Field &field) {
        return field.kind == FieldKind::Path || field.kind == FieldKind::Url;
    });
}

void EffectCollector::takeReference(QStringView reference)
{
    const ReferenceRow *row = rowOf(reference);
    if (!row || row->effect == Effect::NoEffect)
        return;
    if (row->effect == Effect::ReadFile)
        m_sheet.add(Effect::ReadFile, {.given = true});
    else
        m_sheet.addAnything(row->effect);
}

bool EffectCollector::mayLearn(QStringView text)
{
    return std::ranges::any_of(referenceRows, [text](const ReferenceRow &row) {
        return row.effect != Effect::NoEffect && text.contains(row.start);
    });
}

void EffectCollector::take(const CommandInfo &info, const FieldValue &valueOf)
{
    if (!info.effects.areNamed() && mustNameEffects(info)) {
        m_sheet.addEverything();
        return;
    }
    takeEffects(info.effects, valueOf);

    const auto fields = info.usedFields();
    for (std::size_t index = 0; index < fields.size(); ++index) {
        const Field &field = fields[index];
        if (field.kind != FieldKind::Choice || field.choices().empty())
            continue;
        const PossibleText word = valueOf(static_cast<int>(index));
        if (word.isGiven() || word.isUnknown()) {
            for (const CommandInfo &choice : field.choices())
                takeEffects(choice.effects, valueOf);
        }
        for (const QString &text : word.texts()) {
            if (const CommandEffects *effects = effectsOfChoice(field, text))
                takeEffects(*effects, valueOf);
        }
    }
}

void EffectCollector::takeEffects(const CommandEffects &effects, const FieldValue &valueOf)
{
    const auto names = [&effects](Effect effect, int field) {
        return std::ranges::any_of(
            effects, [&](const CommandEffect &each) { return each.effect == effect && each.field == field; });
    };
    for (const CommandEffect &each : effects) {
        const auto value = [&] { return valueOf(each.field); };
        const bool takesAddresses = names(Effect::Contact, each.field);
        switch (each.effect) {
        case Effect::NoEffect:
        case Effect::Nothing:
        case Effect::TakeGiven:
            break;
        case Effect::ReadFile:
        case Effect::WriteFile:
            takeFile(each.effect, value(), each.form, takesAddresses);
            break;
        case Effect::Contact:
            if (each.form == ObjectForm::Page)
                takePage(value());
            else
                takeContact(value(), !names(Effect::Run, each.field) && !names(Effect::ReadFile, each.field));
            break;
        case Effect::Run:
            takeRun(value(), takesAddresses);
            break;
        case Effect::Calculate:
            takeExpression(value());
            break;
        default:
            if (each.field >= 0)
                takeText(each.effect, value());
            else
                m_sheet.addAnything(each.effect);
        }
    }
}

void EffectCollector::takeFile(Effect effect, const PossibleText &path, ObjectForm form, bool takesAddresses)
{
    Scope scope{.given = path.isGiven()};
    for (const QString &text : path.texts()) {
        if ((text.isEmpty() && form != ObjectForm::Folder) || (takesAddresses && isWebAddress(text)))
            continue;
        if (const std::optional<QString> object = fileObject(text, form))
            scope.addObject(*object);
        else
            scope.anything = true;
    }
    m_sheet.add(effect, scope);
}

void EffectCollector::takeContact(const PossibleText &address, bool isOnlyAddress)
{
    Scope scope{.given = address.isGiven()};
    for (const QString &text : address.texts()) {
        const bool mayBeAddress = isWebAddress(text) || text.startsWith(anyText);
        if (text.isEmpty() || (!isOnlyAddress && !mayBeAddress))
            continue;
        if (const std::optional<QString> object = hostObject(text))
            scope.addObject(*object);
        else
            scope.anything = true;
    }
    m_sheet.add(Effect::Contact, scope);
}

void EffectCollector::takePage(const PossibleText &page)
{
    if (page.isGiven() || !std::ranges::all_of(page.texts(), isPlain))
        m_sheet.addAnything(Effect::Contact);
}

void EffectCollector::takeRun(const PossibleText &target, bool takesAddresses)
{
    Scope scope{.given = target.isGiven()};
    for (const QString &text : target.texts()) {
        if (text.isEmpty() || (takesAddresses && isWebAddress(text)))
            continue;
        if (const std::optional<QString> object = runObject(text))
            scope.addObject(*object);
        else
            scope.anything = true;
    }
    m_sheet.add(Effect::Run, scope);
}

void EffectCollector::takeText(Effect effect, const PossibleText &text)
{
    Scope scope{.given = text.isGiven()};
    for (const QString &each : text.texts()) {
        const bool isKnown
            = !each.contains(anyText) && !each.contains(appFolderText) && !each.contains(desktopText);
        if (effect == Effect::ChangeWindows && isKnown)
            scope.addObject(each);
        else
            scope.anything = true;
    }
    m_sheet.add(effect, scope);
}

// What stands in an expression that the user types is the user's own affair; the run is held to the sheet
// then.
void EffectCollector::takeExpression(const PossibleText &expression)
{
    for (const ReferenceRow &row : referenceRows) {
        const bool mayStand = expression.isUnknown()
            || std::ranges::any_of(
                expression.texts(), [&row](const QString &text) { return text.contains(row.start); });
        if (mayStand)
            takeReference(row.start);
    }
}

void EffectCollector::finish()
{
    const Scope *run = m_sheet.find(Effect::Run);
    const Scope *write = m_sheet.find(Effect::WriteFile);
    if (!run || !write || run->anything)
        return;
    const bool startsWhatItWrites = std::ranges::any_of(run->objects, [write](const QString &object) {
        return object.startsWith("file:"_L1) && covers(Effect::WriteFile, *write, object);
    });
    // What the user names twice can be the same.
    if (startsWhatItWrites || (run->given && (write->given || write->anything)))
        m_sheet.addAnything(Effect::Run);
}

} // namespace plum
