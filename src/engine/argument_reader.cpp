#include "engine/argument_reader.h"

#include "engine/conversions.h"
#include "engine/launcher.h"
#include "engine/references.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/script_folders.h"
#include "engine/text_files.h"
#include "engine/text_functions.h"
#include "platform/clipboard.h"
#include "platform/pointer.h"
#include "platform/shell.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';
constexpr QLatin1StringView slot("+?+");
constexpr QLatin1StringView listStart("+(");

bool isQuoted(const QString &text)
{
    return text.startsWith(quote) && text.endsWith(quote);
}

// A lone quote counts as quoted too and leaves nothing.
QString unquoted(const QString &text)
{
    return text.size() < 2 ? QString() : text.sliced(1, text.size() - 2);
}

bool isTemplate(const QString &piece)
{
    return piece.endsWith(u')') && piece.contains(listStart);
}

// The shell fills a buffer of this many characters with the desktop's path; scripts never saw a longer one.
constexpr qsizetype desktopPathLimit = 200;

} // namespace

QString ArgumentReader::GetArg(
    const QString &text, const QString &separator, int index, UnknownVariable unknown) const
{
    if (isQuoted(text) && CountOf(u"\"", text) == 2)
        return EvalArg(text, unknown);
    if (!text.isEmpty() && text.contains(separator))
        return EvalArg(pieceAt(split(text, separator), index), unknown);
    return EvalArg(text, unknown);
}

QString ArgumentReader::EvalArg(const QString &piece, UnknownVariable unknown) const
{
    QString value;
    if (isQuoted(piece))
        value = unquoted(piece);
    else if (isTemplate(piece))
        value = fillTemplate(piece, unknown);
    else if (!piece.isEmpty())
        value = ExpandVar(piece, unknown);
    return value.replace(commaPlaceholder, u","_s);
}

QString ArgumentReader::fillTemplate(const QString &piece, UnknownVariable unknown) const
{
    const qsizetype from = piece.indexOf(listStart) + listStart.size();
    const QString list = piece.sliced(from, piece.indexOf(u')', from) - from);

    QString filled = piece;
    if (!list.contains(u'+')) {
        filled.replace(slot, ExpandVar(list, unknown));
    } else {
        for (const QString &name : list.split(u'+')) {
            const QString value = ExpandVar(name, unknown);
            if (const qsizetype at = filled.indexOf(slot); at >= 0)
                filled.replace(at, slot.size(), value);
        }
    }
    // A slot that touches the list takes the list's "+" with it; then there is nothing left to cut.
    const qsizetype end = filled.indexOf(listStart);
    return end < 0 ? filled : filled.first(end);
}

QString ArgumentReader::ExpandVar(const QString &token, UnknownVariable unknown) const
{
    const qsizetype dot = token.indexOf(u'.');
    if (dot < 0)
        return {};
    const QStringView prefix = QStringView(token).first(dot);
    const QString name = token.sliced(dot + 1);

    QString value;
    resumeNext([&] {
        if (prefix == u"os")
            value = osValue(name);
        else if (prefix == u"set")
            value = setValue(name, unknown);
        else if (prefix == u"str")
            value = name == u"r"_s ? u"\r\n"_s : QString();
        else if (prefix == u"me")
            value = meValue(name);
        else if (prefix == u"mouse")
            value = mouseValue(name);
        else
            value = token;
    });
    return value;
}

QString ArgumentReader::osValue(QStringView name) const
{
    if (name == u"get_clipboard")
        return m_from.clipboard.text();
    if (name == u"path_pfold" || name == u"path_ppfold") {
        QString script = m_from.state.runctx[0];
        QString folder = ParentPath(script, ParentPathMode::WithoutSeparator);
        return name == u"path_pfold" ? folder : ParentPath(folder, ParentPathMode::WithoutSeparator);
    }
    if (name == u"path_package")
        return m_from.folders.app(m_from.state.currentKeyword);
    if (name == u"path_package_name")
        return m_from.state.currentKeyword;
    if (name == u"path_desktop")
        return m_from.shell.desktopFolder().left(desktopPathLimit);
    return {};
}

bool isReference(QStringView token)
{
    static constexpr std::array<QStringView, 12> known{u"os.get_clipboard", u"os.path_pfold",
        u"os.path_ppfold", u"os.path_package", u"os.path_package_name", u"os.path_desktop", u"str.r",
        u"me.text_input", u"me.drag", u"me.drag_text", u"me.enter_input", u"mouse.xy"};
    constexpr QStringView numbered = u"me.enter_input_";
    if (token.startsWith(numbered) && token.size() > numbered.size())
        return std::ranges::all_of(token.sliced(numbered.size()), [](QChar c) { return c.isDigit(); });
    return std::ranges::find(known, token) != known.end();
}

VariableStore &ArgumentReader::variables() const
{
    return m_from.state.vardict;
}

QString ArgumentReader::setValue(const QString &name, UnknownVariable unknown) const
{
    if (m_from.state.vardict.contains(name))
        return m_from.state.vardict.GetVar(name);
    return unknown == UnknownVariable::IsItsName ? name : QString();
}

QString ArgumentReader::meValue(QStringView name) const
{
    if (name == u"text_input")
        return m_from.launcher.inputEntryText();
    if (name == u"drag")
        return m_from.state.droppedPath;
    if (name == u"drag_text")
        return m_from.files.ReadAllText(m_from.state.droppedPath, ReadAllMode::Joined);

    constexpr QLatin1StringView typedInput("enter_input");
    if (name == typedInput)
        return AfterFirstBlank(m_from.launcher.keywordBoxText());
    if (name.startsWith(typedInput)) {
        const qint16 number = toInt16(name.sliced(name.lastIndexOf(u'_') + 1));
        return pieceAt(split(AfterFirstBlank(m_from.launcher.keywordBoxText()), u","_s), number - 1);
    }
    return {};
}

QString ArgumentReader::mouseValue(QStringView name) const
{
    if (name != u"xy")
        return {};
    const QPoint at = m_from.pointer.position();
    return u"%1:%2"_s.arg(at.x()).arg(at.y());
}

} // namespace plum
