#pragma once

#include <QList>
#include <QTextCursor>

#include <vector>

class QTextDocument;

namespace plum {

// The lines of a text before which a run is to be held, counted from 0. They move with their text, stay where
// another text takes its place, and go with the line.
class Breakpoints
{
public:
    explicit Breakpoints(QTextDocument &document)
        : m_document(document)
    {
    }

    QList<int> lines() const; // in their order
    void set(const QList<int> &lines);
    void toggle(int line);

    // The text has changed; so many characters came.
    void noteChange(int added);

private:
    QTextDocument &m_document;
    std::vector<QTextCursor> m_places; // with the text of the line selected
};

} // namespace plum
