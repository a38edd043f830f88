#pragma once

#include <QScrollArea>

namespace plum {

// Holds the content of a window that may be larger than a small screen: as large as the content where there
// is room, else it scrolls. The content is made on `content()`.
class FittingArea final : public QScrollArea
{
    Q_OBJECT

public:
    explicit FittingArea(QWidget *window);

    QWidget *content() const { return widget(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {1, 1}; }
};

} // namespace plum
