#include "ui/editing/completion_list.h"

#include <QScrollBar>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 8;
constexpr int narrowest = 140; // pixels

} // namespace

CompletionList::CompletionList(QWidget *parent)
    : QListWidget(parent)
{
    setObjectName(u"completions"_s);
    setAccessibleName(tr("Suggestions"));
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    // What is pressed here is not for the editor below.
    setAttribute(Qt::WA_NoMousePropagation);
    hide();
}

void CompletionList::open(
    const QList<ScriptWords::Suggestion> &suggestions, bool marksFirst, const QRect &word)
{
    m_suggestions = suggestions;
    clear();
    for (const ScriptWords::Suggestion &suggestion : suggestions)
        addItem(suggestion.text);
    setCurrentRow(marksFirst ? 0 : -1);

    const QSize room = parentWidget()->size();
    const int rowHeight = std::max(sizeHintForRow(0), 1);
    const int frame = height() - viewport()->height();
    const int below = room.height() - word.bottom();
    const int above = word.top();
    const int wanted = std::min(count(), mostRows);
    const bool isBelow = below >= wanted * rowHeight + frame || below >= above;
    const int rows = std::clamp(((isBelow ? below : above) - frame) / rowHeight, 1, wanted);
    const int scrollBar = rows < count() ? verticalScrollBar()->sizeHint().width() : 0;
    const int width
        = std::clamp(sizeHintForColumn(0) + frame + scrollBar, narrowest, std::max(room.width(), narrowest));
    const int tall = rows * rowHeight + frame;
    setGeometry(std::clamp(word.left(), 0, std::max(room.width() - width, 0)),
        isBelow ? word.bottom() + 1 : word.top() - tall, width, tall);
    scrollToTop();
    show();
    raise();
}

const ScriptWords::Suggestion *CompletionList::marked() const
{
    return isVisible() && currentRow() >= 0 ? &m_suggestions[currentRow()] : nullptr;
}

bool CompletionList::moveMark(int key)
{
    const int last = count() - 1;
    const int row = currentRow();
    switch (key) {
    case Qt::Key_Down:
        setCurrentRow(row == last ? 0 : row + 1);
        return true;
    case Qt::Key_Up:
        setCurrentRow(row <= 0 ? last : row - 1);
        return true;
    case Qt::Key_PageDown:
        setCurrentRow(std::min(row + mostRows, last));
        return true;
    case Qt::Key_PageUp:
        setCurrentRow(std::max(row - mostRows, 0));
        return true;
    default:
        return false;
    }
}

} // namespace plum
