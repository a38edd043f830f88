#include "sheet/sheet.h"

#include "sheet/objects.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

bool isInput(Effect effect)
{
    return effect == Effect::Keys || effect == Effect::Paste || effect == Effect::Mouse;
}

} // namespace

void Scope::addObject(const QString &object)
{
    const auto place = std::ranges::lower_bound(objects, object);
    if (place == objects.end() || *place != object)
        objects.insert(place, object);
}

void Scope::add(const Scope &other)
{
    anything = anything || other.anything;
    given = given || other.given;
    for (const QString &object : other.objects)
        addObject(object);
}

std::span<const EffectRow> effectRows()
{
    using enum EffectClass;
    static constexpr std::array rows{
        EffectRow{Effect::SeeScreen, See, u"screen"},
        EffectRow{Effect::SeeClipboard, See, u"clipboard"},
        EffectRow{Effect::SeeWindows, See, u"windows"},
        EffectRow{Effect::SeePointer, See, u"pointer"},
        EffectRow{Effect::ReadFile, Read, u""},
        EffectRow{Effect::WriteFile, Write, u""},
        EffectRow{Effect::Contact, Network, u""},
        EffectRow{Effect::Keys, Input, u"keys"},
        EffectRow{Effect::Paste, Input, u"paste"},
        EffectRow{Effect::Mouse, Input, u"mouse"},
        EffectRow{Effect::SetClipboard, Input, u"clipboard"},
        EffectRow{Effect::ChangeWindows, Input, u"windows"},
        EffectRow{Effect::Run, EffectClass::Run, u""},
        EffectRow{Effect::Evaluate, EffectClass::Run, u"javascript"},
        EffectRow{Effect::LockScreen, Session, u"lock"},
        EffectRow{Effect::SwitchMonitorOff, Session, u"monitor off"},
        EffectRow{Effect::LogOff, Session, u"log off"},
        EffectRow{Effect::ShutDown, Session, u"shut down"},
        EffectRow{Effect::Restart, Session, u"restart"},
    };
    return rows;
}

const Scope *Sheet::find(Effect effect) const
{
    const auto found = m_effects.find(effect);
    return found == m_effects.end() ? nullptr : &found->second;
}

void Sheet::add(Effect effect, const Scope &scope)
{
    if (!scope.isEmpty())
        m_effects[effect].add(scope);
}

void Sheet::addEverything()
{
    for (const EffectRow &row : effectRows())
        addAnything(row.effect);
}

Sheet Sheet::everything()
{
    Sheet sheet;
    sheet.addEverything();
    return sheet;
}

bool covers(Effect effect, const Scope &scope, const QString &object)
{
    if (std::ranges::binary_search(scope.objects, object))
        return true;
    const bool isScript = effect == Effect::WriteFile && isScriptObject(object);
    if (isScript)
        return false;
    if (std::ranges::any_of(scope.objects,
            [&](const QString &each) { return isFolderObject(each) && object.startsWith(each); }))
        return true;
    return scope.anything && !isApart(object);
}

Sheet Sheet::growthFrom(const Sheet &old) const
{
    Sheet growth;
    for (const auto &[effect, scope] : m_effects) {
        const Scope *before = old.find(effect);
        // Keys that went to one window and now go anywhere are new, whatever they were before.
        const bool isWider = isInput(effect) && !old.window().isEmpty() && old.window() != m_window;
        if (!before || isWider) {
            growth.add(effect, scope);
            continue;
        }
        Scope more{.anything = scope.anything && !before->anything,
            .given = scope.given && !before->given && !before->anything};
        for (const QString &object : scope.objects) {
            if (!covers(effect, *before, object))
                more.addObject(object);
        }
        growth.add(effect, more);
    }
    if (std::ranges::any_of(growth.m_effects, [](const auto &each) { return isInput(each.first); }))
        growth.m_window = m_window;
    return growth;
}

} // namespace plum
