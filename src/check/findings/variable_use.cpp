#include "check/findings/variable_use.h"

#include "check/findings/check_words.h"
#include "check/findings/nearest_word.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString otherCase(const QString &name, const QStringList &known)
{
    for (const QString &other : known) {
        if (other != name && other.compare(name, Qt::CaseInsensitive) == 0)
            return other;
    }
    return {};
}

} // namespace

void VariableUse::clear()
{
    for (const Place &place : m_places)
        m_variables[static_cast<std::size_t>(place.name)] = {};
    m_places.clear();
    m_doubts.clear();
    m_loops.clear();
    m_setsUnknown = false;
}

void VariableUse::add(int name, int line, int column, bool isSet, const std::optional<QString> &value)
{
    const auto index = static_cast<std::size_t>(name);
    if (index >= m_variables.size())
        m_variables.resize(static_cast<std::size_t>(m_names.count()));
    Variable &variable = m_variables[index];
    const int here = static_cast<int>(m_places.size());
    m_places.push_back({name, line, column, isSet, isSet ? variable.lastSet : nowhere, value});
    if (!isSet) {
        variable.isRead = true;
        return;
    }
    variable.lastSet = here;
    if (variable.firstSet == nowhere)
        variable.firstSet = here;
}

VariableUse::Variable VariableUse::variable(int name) const
{
    const auto index = static_cast<std::size_t>(name);
    return index < m_variables.size() ? m_variables[index] : Variable();
}

void VariableUse::set(const QString &name, int line, int column, const std::optional<QString> &value)
{
    const int number = m_names.numberOf(name);
    add(number, line, column, true, value);
    if (m_transcript)
        m_transcript->uses.push_back({number, column, true, value});
}

void VariableUse::read(const QString &name, int line, int column)
{
    const int number = m_names.numberOf(name);
    add(number, line, column, false, {});
    if (m_transcript)
        m_transcript->uses.push_back({number, column, false, {}});
}

bool VariableUse::isSet(const QString &name) const
{
    const int number = m_names.numberOf(name);
    const bool answer = variable(number).firstSet != nowhere;
    // What the line itself has set is no question to the lines above.
    if (m_transcript && std::ranges::none_of(m_transcript->uses, [number](const LineTranscript::Use &use) {
            return use.isSet && use.name == number;
        }))
        m_transcript->askedSets.push_back({number, answer});
    return answer;
}

void VariableUse::doubt(const QString &name, const QString &message)
{
    const int number = m_names.numberOf(name);
    m_doubts.insert(number, message);
    if (m_transcript)
        m_transcript->doubts.push_back({number, message});
}

void VariableUse::setSomething()
{
    m_setsUnknown = true;
    if (m_transcript)
        m_transcript->setsUnknown = true;
}

std::optional<QString> VariableUse::constant(const QString &name, int line) const
{
    const int number = m_names.numberOf(name);
    std::optional<QString> value = constantOf(number, line);
    if (m_transcript)
        m_transcript->askedConstants.push_back({number, value});
    return value;
}

std::optional<QString> VariableUse::constantOf(int name, int line) const
{
    if (m_setsUnknown)
        return {};
    int nearest = variable(name).lastSet;
    while (nearest != nowhere && place(nearest).line >= line)
        nearest = place(nearest).setBefore;
    return nearest == nowhere ? std::nullopt : place(nearest).value;
}

bool VariableUse::answersAsBefore(const LineTranscript &transcript, int line) const
{
    return std::ranges::all_of(transcript.askedSets, [&](const LineTranscript::AskedSet &asked) {
        return (variable(asked.name).firstSet != nowhere) == asked.isSet;
    }) && std::ranges::all_of(transcript.askedConstants, [&](const LineTranscript::AskedConstant &asked) {
        return constantOf(asked.name, line) == asked.value;
    });
}

void VariableUse::repeat(const LineTranscript &transcript, int line)
{
    for (const LineTranscript::Use &use : transcript.uses)
        add(use.name, line, use.column, use.isSet, use.value);
    for (const LineTranscript::Doubt &doubt : transcript.doubts)
        m_doubts.insert(doubt.name, doubt.message);
    m_setsUnknown = m_setsUnknown || transcript.setsUnknown;
}

// Whether a line above sets it, or one below in a loop around both.
bool VariableUse::maySetBefore(int name, int line) const
{
    const Variable known = variable(name);
    if (known.firstSet == nowhere)
        return false;
    if (place(known.firstSet).line < line)
        return true;
    for (const auto &[first, last] : m_loops) {
        if (line < first || line > last)
            continue;
        for (int at = known.lastSet; at != nowhere; at = place(at).setBefore) {
            if (first <= place(at).line && place(at).line <= last)
                return true;
        }
    }
    return false;
}

// In the order in which they are first set, so that what is suggested does not change from time to time.
QStringList VariableUse::namesThatAreSet() const
{
    QStringList names;
    for (std::size_t index = 0; index < m_places.size(); ++index) {
        const Place &each = m_places[index];
        if (each.isSet && variable(each.name).firstSet == static_cast<int>(index))
            names += m_names.name(each.name);
    }
    return names;
}

void VariableUse::report(Report &report, Unset unset) const
{
    const QStringList known = namesThatAreSet();
    for (const Place &each : m_places) {
        if (!each.isSet && !m_setsUnknown && !maySetBefore(each.name, each.line))
            reportUnset(report, each, unset, known);
    }
    reportUnread(report);
    addNames(report);
}

void VariableUse::addNames(Report &report) const
{
    const int scope = report.beginScope();
    for (const Place &each : m_places)
        report.addName({scope, m_names.name(each.name), each.line, each.column, each.isSet});
    if (m_setsUnknown)
        report.addUnknownName();
}

void VariableUse::reportUnset(Report &report, const Place &where, Unset unset, const QStringList &known) const
{
    const QString consequence = unset == Unset::IsItsName ? CheckWords::tr("here it stands for its own name")
                                                          : CheckWords::tr("reading it here ends the run");
    const QString &name = m_names.name(where.name);
    if (variable(where.name).firstSet != nowhere)
        report.add(where.line, where.column, u"never-set",
            CheckWords::tr("\"%1\" is set only further down; %2.").arg(name, consequence));
    else if (const QString other = otherCase(name, known); !other.isEmpty())
        report.add(where.line, where.column, u"name-case",
            CheckWords::tr("\"%1\" is never set, \"%2\" is: letter case counts.").arg(name, other));
    else
        report.add(where.line, where.column, u"never-set",
            CheckWords::tr("No line sets \"%1\"; %2.%3").arg(name, consequence, didYouMean(name, known)));
}

void VariableUse::reportUnread(Report &report) const
{
    for (std::size_t index = 0; index < m_places.size(); ++index) {
        const Place &each = m_places[index];
        const Variable known = variable(each.name);
        if (!each.isSet || known.isRead || known.firstSet != static_cast<int>(index))
            continue;
        if (const auto doubt = m_doubts.constFind(each.name); doubt != m_doubts.constEnd())
            report.add(each.line, each.column, u"odd-value", *doubt);
        else
            report.add(each.line, each.column, u"never-read",
                CheckWords::tr("No line reads \"%1\".").arg(m_names.name(each.name)));
    }
}

} // namespace plum
