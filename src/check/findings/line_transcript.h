#pragma once

#include "check/findings/finding.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace plum {

// Names as numbers from 0 on, which stay the same while a script is edited.
class NameTable
{
public:
    int numberOf(const QString &name);
    const QString &name(int number) const { return m_names[number]; }
    int count() const { return static_cast<int>(m_names.size()); }

private:
    QHash<QString, int> m_numbers;
    QStringList m_names;
};

// What judging one line came to, and what it had asked for: the same line comes to the same again, wherever
// it stands by then, as long as its questions have the same answers.
struct LineTranscript
{
    struct Said
    {
        int column;
        QString rule;
        Severity severity;
        QString message;
    };
    struct Use
    {
        int name;
        int column;
        bool isSet;
        std::optional<QString> value; // that is set, where it is known
    };
    struct Doubt
    {
        int name;
        QString message;
    };
    struct PartUse
    {
        QString name;
        int column;
        bool isSet;
    };

    struct AskedSet
    {
        int name;
        bool isSet;
    };
    struct AskedConstant
    {
        int name;
        std::optional<QString> value;
    };
    struct AskedFile
    {
        QString path;
        qint64 size;
        qint64 changed; // milliseconds since 1970
    };

    std::vector<Said> said;
    std::vector<Use> uses;
    std::vector<Doubt> doubts;
    std::vector<PartUse> partUses;
    bool setsUnknown = false;
    bool namesUnknown = false;

    std::vector<AskedSet> askedSets;
    std::vector<AskedConstant> askedConstants;
    std::vector<AskedFile> askedFiles;

    bool isKept = false; // false before the line is judged, and where it has to be judged anew each time
};

// Records of the lines of a script as it is edited: those of lines above and below a change stay.
template <typename Record> class LineMemory
{
public:
    // The records of `lines`, one each; new ones where the lines were not there.
    std::vector<std::unique_ptr<Record>> &recordsOf(const QStringList &lines)
    {
        const qsizetype most = std::min(lines.size(), m_lines.size());
        qsizetype above = 0;
        while (above < most && lines[above] == m_lines[above])
            ++above;
        qsizetype below = 0;
        while (below < most - above && lines[lines.size() - 1 - below] == m_lines[m_lines.size() - 1 - below])
            ++below;
        const auto begin = m_records.begin() + above;
        const auto end = m_records.end() - below;
        const qsizetype fresh = lines.size() - above - below;
        const qsizetype stale = end - begin;
        for (auto record = begin; record != begin + std::min(fresh, stale); ++record)
            *record = std::make_unique<Record>();
        if (stale > fresh) {
            m_records.erase(begin + fresh, end);
        } else {
            std::vector<std::unique_ptr<Record>> added(static_cast<std::size_t>(fresh - stale));
            for (auto &record : added)
                record = std::make_unique<Record>();
            m_records.insert(
                end, std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
        }
        m_lines = lines;
        return m_records;
    }

private:
    QStringList m_lines;
    std::vector<std::unique_ptr<Record>> m_records; // as many as lines
};

} // namespace plum
