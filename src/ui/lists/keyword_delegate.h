#pragma once

#include <QStyledItemDelegate>

namespace plum {

class AppFaces;
struct Theme;

// Paints an app: its picture or first letter, its keyword, and what its guide says.
class KeywordDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    static constexpr int iconSide = 30; // logical pixels

    KeywordDelegate(AppFaces &faces, QObject *parent);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    AppFaces &m_faces;
};

} // namespace plum
