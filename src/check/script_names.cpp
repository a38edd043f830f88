#include "check/script_names.h"

#include "check/findings/check_words.h"
#include "engine/edition2/line_reader.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <tuple>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What may stand between the place of a value and the name in it.
constexpr std::array<QStringView, 3> openings{u"", u"\"", u"set."};

auto placeOf(const NameUse &use)
{
    return std::tuple(use.line, use.column);
}

// The column of the name itself; 0 when the line has it in another way.
int exactColumn(const NameUse &use, const QString &line)
{
    for (const QStringView opening : openings) {
        const qsizetype start = use.column - 1 + opening.size();
        if (use.column < 1 || start + use.name.size() > line.size())
            continue;
        const QStringView there = QStringView(line).sliced(use.column - 1);
        if (there.startsWith(opening) && there.sliced(opening.size()).startsWith(use.name))
            return static_cast<int>(start) + 1;
    }
    return 0;
}

bool isNameIn(const QString &name, Edition edition)
{
    if (edition == Edition::Two)
        return edition2::isName(name);
    // What ends a name, an argument or a template.
    static const QRegularExpression plain(u"\\A[^\\s.,:\"+()]+\\z"_s);
    return plain.match(name).hasMatch();
}

} // namespace

ScriptNames::ScriptNames(const NameUses &names, const QStringList &lines)
    : m_areAllKnown(names.areAllKnown)
    , m_lines(lines)
{
    for (NameUse use : names.uses) {
        if (use.name.isEmpty())
            continue;
        const int column = exactColumn(use, lines.value(use.line - 1));
        QList<NameUse> &known = column > 0 ? m_uses : m_hidden;
        use.column = column;
        known += use;
    }
    // A variable that a line reads and sets by one word is one place.
    std::ranges::sort(
        m_uses, {}, [](const NameUse &use) { return std::tuple(use.line, use.column, !use.isSet); });
    const auto [rest, end] = std::ranges::unique(m_uses, {}, placeOf);
    m_uses.erase(rest, end);
}

const NameUse *ScriptNames::at(int line, int column) const
{
    const auto found = std::ranges::find_if(m_uses, [&](const NameUse &use) {
        return use.line == line && use.column <= column && column <= use.column + use.name.size();
    });
    return found == m_uses.end() ? nullptr : &*found;
}

QList<NameUse> ScriptNames::sameAs(const NameUse &use) const
{
    QList<NameUse> same;
    std::ranges::copy_if(m_uses, std::back_inserter(same),
        [&](const NameUse &other) { return other.scope == use.scope && other.name == use.name; });
    return same;
}

// The number of a line that could not be read and may mean the name; empty when there is none.
QString ScriptNames::unreadLine(const NameUse &use, const Findings &findings) const
{
    for (const Finding &finding : findings) {
        if (finding.severity == Severity::Error && m_lines.value(finding.line - 1).contains(use.name)
            && std::ranges::none_of(m_uses, [&](const NameUse &other) { return other.line == finding.line; }))
            return QString::number(finding.line);
    }
    return {};
}

QString ScriptNames::obstacle(
    const NameUse &use, const QString &newName, Edition edition, const Findings &findings) const
{
    if (!isNameIn(newName, edition))
        return CheckWords::tr("\"%1\" is no name.").arg(newName);
    const auto isSame = [&](const QString &name) {
        return [&use, name](const NameUse &other) { return other.scope == use.scope && other.name == name; };
    };
    if (newName != use.name
        && (std::ranges::any_of(m_uses, isSame(newName)) || std::ranges::any_of(m_hidden, isSame(newName))))
        return CheckWords::tr("There is \"%1\" already.").arg(newName);
    if (const auto hidden = std::ranges::find_if(m_hidden, isSame(use.name)); hidden != m_hidden.end())
        return CheckWords::tr("Line %1 means \"%2\" without its name.").arg(hidden->line).arg(use.name);
    if (use.scope == NameUse::partScope && std::ranges::none_of(m_uses, [&](const NameUse &other) {
            return isSame(use.name)(other) && other.isSet;
        }))
        return CheckWords::tr("The part \"%1\" stands in another file.").arg(use.name);
    if (use.scope != NameUse::partScope && !m_areAllKnown)
        return CheckWords::tr("A value decides which variable a line sets, so \"%1\" may be meant there.")
            .arg(use.name);
    if (const QString line = unreadLine(use, findings); !line.isEmpty())
        return CheckWords::tr("Line %1 has a mistake, and \"%2\" in it.").arg(line, use.name);
    return {};
}

} // namespace plum
