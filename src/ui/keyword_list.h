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
    KeywordList(const QString &name, AppFaces &faces, QWidget *parent);

    // The selected item's text; empty when none is selected.
    QString text() const;

    void selectFirst();

    // The keyword that Enter in the keyword box would run is marked; it is not selected.
    void mark(const QString &keyword);
    bool isMarked(const QString &keyword) const { return !m_marked.isEmpty() && keyword == m_marked; }

Q_SIGNALS:
    void leftPressed();
    void leftAtTheTop(); // by the Up key in the first row
    void typed(const QString &text); // meant for the keyword box
    void renameRequested();
    void deleteRequested();
    void runRequested(const QString &keyword);
    void menuRequested(QPoint globalPosition);
    void editRequested(const QString &keyword);
    void fileDropped(const QString &path);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void requestMenuByKey();

    QString m_marked;
};

} // namespace plum
