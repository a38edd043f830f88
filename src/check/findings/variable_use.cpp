#include "check/findings/variable_use.h"

#include "check/findings/nearest_word.h"

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

void VariableUse::set(const QString &name, int line, int column, std::optional<QString> value)
{
    m_sets[name] += {line, column, std::move(value)};
}

void VariableUse::read(const QString &name, int line, int column)
{
    m_reads[name] += {line, column, {}};
}

void VariableUse::addLoop(int firstLine, int lastLine)
{
    m_loops += {firstLine, lastLine};
}

std::optional<QString> VariableUse::constant(const QString &name, int line) const
{
    const auto places = m_sets.constFind(name);
    if (m_setsUnknown || places == m_sets.constEnd())
        return {};
    // The lines come in order, so the nearest one is near the end.
    const auto nearest = std::find_if(
        places->crbegin(), places->crend(), [line](const Place &place) { return place.line < line; });
    return nearest == places->crend() ? std::nullopt : nearest->value;
}

// Whether a line above sets it, or one below in a loop around both.
bool VariableUse::maySetBefore(const QString &name, int line) const
{
    const auto places = m_sets.constFind(name);
    return places != m_sets.constEnd() && std::ranges::any_of(*places, [&](const Place &place) {
        return place.line < line || std::ranges::any_of(m_loops, [&](const std::pair<int, int> &loop) {
            return loop.first <= line && line <= loop.second && loop.first <= place.line
                && place.line <= loop.second;
        });
    });
}

QString VariableUse::otherCase(const QString &name) const
{
    for (const QString &other : m_sets.keys()) {
        if (other != name && other.compare(name, Qt::CaseInsensitive) == 0)
            return other;
    }
    return {};
}

void VariableUse::report(Report &report, Unset unset) const
{
    for (auto it = m_reads.constBegin(); it != m_reads.constEnd(); ++it) {
        for (const Place &place : it.value()) {
            if (!m_setsUnknown && !maySetBefore(it.key(), place.line))
                reportUnset(report, it.key(), place, unset);
        }
    }
    reportUnread(report);
    addNames(report);
}

void VariableUse::addNames(Report &report) const
{
    const int scope = report.beginScope();
    const auto add = [&](const QHash<QString, QList<Place>> &uses, bool isSet) {
        for (auto it = uses.constBegin(); it != uses.constEnd(); ++it) {
            for (const Place &place : it.value())
                report.addName({scope, it.key(), place.line, place.column, isSet});
        }
    };
    add(m_sets, true);
    add(m_reads, false);
    if (m_setsUnknown)
        report.addUnknownName();
}

void VariableUse::reportUnset(Report &report, const QString &name, const Place &place, Unset unset) const
{
    const QString consequence = unset == Unset::IsItsName ? u"here it stands for its own name"_s
                                                          : u"reading it here ends the run"_s;
    if (m_sets.contains(name))
        report.add(place.line, place.column, u"never-set",
            u"\"%1\" is set only further down; %2."_s.arg(name, consequence));
    else if (const QString other = otherCase(name); !other.isEmpty())
        report.add(place.line, place.column, u"name-case",
            u"\"%1\" is never set, \"%2\" is: letter case counts."_s.arg(name, other));
    else
        report.add(place.line, place.column, u"never-set",
            u"No line sets \"%1\"; %2.%3"_s.arg(name, consequence, didYouMean(name, m_sets.keys())));
}

void VariableUse::reportUnread(Report &report) const
{
    for (auto it = m_sets.constBegin(); it != m_sets.constEnd(); ++it) {
        if (m_reads.contains(it.key()))
            continue;
        const Place &place = it->front();
        if (const auto doubt = m_doubts.constFind(it.key()); doubt != m_doubts.constEnd())
            report.add(place.line, place.column, u"odd-value", *doubt);
        else
            report.add(place.line, place.column, u"never-read", u"No line reads \"%1\"."_s.arg(it.key()));
    }
}

} // namespace plum
