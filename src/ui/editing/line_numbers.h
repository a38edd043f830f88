#pragma once

#include <QWidget>

namespace plum {

class ScriptEditor;

// The numbers of the lines, beside the script editor, and what was found in a line as a mark of its own
// shape; breakpoints, which a press sets and takes away, and the line before which a run is held.
class LineNumbers final : public QWidget
{
    Q_OBJECT

public:
    explicit LineNumbers(ScriptEditor &editor);

    // Pixels that the numbers of all lines need.
    int neededWidth() const;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    ScriptEditor &m_editor;
};

} // namespace plum
