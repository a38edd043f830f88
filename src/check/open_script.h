#pragma once

#include "check/script_check.h"
#include "check/script_names.h"

#include <QStringList>

namespace plum {

// A place as editors count: lines from 0, and UTF-16 code units in the line from 0.
struct EditorPlace
{
    int line = 0;
    int character = 0;

    bool operator==(const EditorPlace &) const = default;
};

// A script that is open in an editor: its text as it is typed, and what the checker says of it. Editors count
// lines by LF, CR LF and CR, which is not what ends a line in every script; places are translated.
class OpenScript
{
public:
    OpenScript()
        : OpenScript({}, {})
    {
    }
    // `folder` is where it lies; empty when it is no file.
    OpenScript(const QString &folder, const QString &text);

    // Puts a text in place of that between two places; places behind a line's end are at its end.
    void replace(EditorPlace from, EditorPlace to, const QString &with);
    void replaceAll(const QString &with);

    // Lets the checker look at the text as it is now.
    void examine(const ScriptCheck &check);

    const QString &folder() const { return m_folder; }
    const QString &text() const { return m_text; }
    Edition edition() const { return m_edition; }
    const Findings &findings() const { return m_examined.findings; }
    // The names are those of the text that was examined.
    ScriptNames names() const { return {m_examined.names, m_lines}; }

    // The lines as the script's edition has them.
    const QStringList &lines() const { return m_lines; }
    int editorLineCount() const { return static_cast<int>(m_editorStarts.size()); }
    // Without its end.
    QString editorLine(int line) const;
    // What ends it; empty for the last one.
    QString lineEnd(int line) const;

    // From the checker's places, both counted from 1, and back.
    EditorPlace toEditor(int line, int column) const;
    struct ScriptPlace
    {
        int line = 1;
        int column = 1;
    };
    ScriptPlace fromEditor(EditorPlace place) const;

    // What of a finding's line is shown to be meant: from its place to the next comma, or to the line's end.
    struct EditorRange
    {
        EditorPlace from;
        EditorPlace to; // in the same line
    };
    EditorRange rangeOf(const Finding &finding) const;

    // In the text.
    qsizetype offsetOf(EditorPlace place) const;

private:
    void readLines();
    qsizetype endOfEditorLine(int line) const;

    QString m_folder;
    QString m_text;
    Edition m_edition = Edition::One;
    QStringList m_lines;
    QList<qsizetype> m_starts; // of m_lines, in the text
    QList<qsizetype> m_editorStarts;
    ScriptCheck::Examined m_examined;
    std::shared_ptr<ScriptMemory> m_memory; // of copies, too: they are of the same script
};

} // namespace plum
