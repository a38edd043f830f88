#include "flight/flight_log.h"

namespace plum {

namespace {

constexpr qsizetype textBytes = 32; // of a text beside its characters

qsizetype bytesOfText(const QString &text)
{
    return textBytes + 2 * text.size();
}

qsizetype bytesOfDeed(const FlightDeed &deed)
{
    qsizetype bytes = static_cast<qsizetype>(sizeof(FlightEntry::Deed));
    for (const QString &value : deed.values)
        bytes += bytesOfText(value);
    return bytes;
}

} // namespace

void FlightLog::begin(const QString &script)
{
    m_script = script;
    m_outcome.clear();
    m_entries.clear();
    m_first = 0;
    m_bytes = 0;
}

FlightLog::Id FlightLog::add(FlightEntry entry)
{
    m_bytes += bytesOf(entry);
    m_entries.push_back(std::move(entry));
    makeRoom();
    return last();
}

FlightEntry *FlightLog::find(Id id)
{
    return id >= m_first && id <= last() ? &m_entries[static_cast<std::size_t>(id - m_first)] : nullptr;
}

void FlightLog::note(const QString &added)
{
    m_bytes += bytesOfText(added);
    makeRoom();
}

void FlightLog::note(const QString &added, const QString &removed)
{
    m_bytes += bytesOfText(added) - bytesOfText(removed);
    makeRoom();
}

void FlightLog::note(const FlightDeed &added, const FlightDeed *removed)
{
    m_bytes += bytesOfDeed(added) - (removed ? bytesOfDeed(*removed) : 0);
    makeRoom();
}

QString FlightLog::cut(const QString &text)
{
    return text.size() > longestText ? text.first(longestText) + QChar(0x2026) : text;
}

qsizetype FlightLog::bytesOf(const FlightEntry &entry)
{
    qsizetype bytes = static_cast<qsizetype>(sizeof entry) + bytesOfText(entry.line.text)
        + bytesOfText(entry.line.file) + bytesOfText(entry.reason);
    for (const QString &field : entry.fields)
        bytes += bytesOfText(field);
    for (const FlightEntry::Deed &deed : entry.deeds)
        bytes += bytesOfDeed(deed.what);
    for (const FlightEntry::Sight &sight : entry.seen)
        bytes += bytesOfText(sight.what);
    for (const auto &[name, value] : entry.variables)
        bytes += bytesOfText(name) + bytesOfText(value);
    return bytes;
}

// The newest entry stays in any case: a line's texts and deeds are bounded by themselves.
void FlightLog::makeRoom()
{
    while (m_bytes > mostBytes && m_entries.size() > 1) {
        m_bytes -= bytesOf(m_entries.front());
        m_entries.pop_front();
        ++m_first;
    }
}

} // namespace plum
