#pragma once

#include "engine/command_table.h"

#include <QString>
#include <QStringList>

#include <map>
#include <span>

namespace plum {

// What an app may do: its effects by class, each with the narrowest object that could be proved.

enum class EffectClass {
    See,
    Read,
    Write,
    Network,
    Input,
    Run,
    Session,
};

// What an effect may be about. Objects are texts of `sheet/objects.h`; those of a folder end in "/" or ":".
struct Scope
{
    bool anything = false; // but for what is named apart
    bool given = false; // what the user typed or dropped
    QStringList objects = {}; // sorted, each once

    bool isEmpty() const { return !anything && !given && objects.isEmpty(); }
    void add(const Scope &other);
    void addObject(const QString &object);

    bool operator==(const Scope &) const = default;
};

class Sheet
{
public:
    // Null where the sheet does not have the effect.
    const Scope *find(Effect effect) const;
    bool has(Effect effect) const { return find(effect) != nullptr; }

    const std::map<Effect, Scope> &effects() const { return m_effects; }
    bool isEmpty() const { return m_effects.empty(); }

    void add(Effect effect, const Scope &scope);
    void addEverything();
    void addAnything(Effect effect) { add(effect, {.anything = true}); }

    // The title of the one window that keys and clicks go to; empty: whatever is in front.
    const QString &window() const { return m_window; }
    void setWindow(const QString &title) { m_window = title; }

    // What this sheet allows beyond `old`; empty when that is nothing.
    Sheet growthFrom(const Sheet &old) const;

    // All that there is.
    static Sheet everything();

    bool operator==(const Sheet &) const = default;

private:
    std::map<Effect, Scope> m_effects;
    QString m_window;
};

// One row for each effect of a sheet, in the order in which people read them.
struct EffectRow
{
    Effect effect;
    EffectClass effectClass;
    QStringView word; // in JSON; empty where the objects stand for themselves
};

std::span<const EffectRow> effectRows();

// Whether what `object` names is part of what `scope` of the same effect allows.
bool covers(Effect effect, const Scope &scope, const QString &object);

} // namespace plum
