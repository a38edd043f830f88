#pragma once

#include <QListView>

namespace plum {

class AppFaces;

// One of the launcher's two app lists (`List` and `List2`). It tells what the user does with it; what
// follows from that is the launcher's business.
class KeywordList final : public QListView
{
    Q_OBJECT

public:
    // `purpose` says in a few words what the list is for.
    KeywordList(const QString &name, const QString &purpose, AppFaces &faces, QWidget *parent);

    // The selected item's text; empty when none is selected.
    QString text() const;

    void selectFirst();

    // The keyword that Enter in the keyword box would run is marked; it is not selected.
    void mark(const QString &keyword);
    bool isMarked(const QString &keyword) const { return !m_marked.isEmpty() && keyword == m_marked; }

    // One line on what the app does, as far as it is known by now; empty when it says nothing.
    QString guideOf(const QString &keyword) const;

Q_SIGNALS:
    void leftPressed();
    void leftAtTheTop(); // by the Up key in the first row
    void typed(const QString &text); // meant for the keyword box
    void renameRequested();
    void deleteRequested();
    void runRequested(const QString &keyword);
    void menuRequested(QPoint globalPosition);
    void editRequested(const QString &keyword); // by a double click
    void scriptRequested(const QString &keyword); // by a screen reader
    void fileDropped(const QString &path);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void requestMenuByKey();
    void takeCurrentRow();

    AppFaces &m_faces;
    QString m_marked;
};

} // namespace plum
