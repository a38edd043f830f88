#pragma once

#include "ui/launcher_bench.h"

#include "ui/lists/keyword_list.h"

#include <QLineEdit>
#include <QScreen>

namespace plum {

// The launcher window under a user's keys and mouse.
class FrmSetTest : public testing::Test, protected recording::LauncherBench
{
protected:
    QStringList listed(const char *name)
    {
        const auto *model = find<KeywordList>(name)->model();
        QStringList items;
        for (int row = 0; row < model->rowCount(); ++row)
            items += model->index(row, 0).data().toString();
        return items;
    }

    bool inFront(const char *name) { return find(name)->isVisible(); }

    QWidget *text8() { return find("Text8"); }
    QString typed() { return find<QLineEdit>("Text8")->text(); }
    bool keywordBoxHasFocus() { return text8()->hasFocus(); }
    QWidget *viewport(const char *name) { return find<QAbstractScrollArea>(name)->viewport(); }
    QPoint rowCentre(const char *name, int row)
    {
        auto *list = find<KeywordList>(name);
        return list->visualRect(list->model()->index(row, 0)).center();
    }

    void dropPackage(const QString &name)
    {
        const QString package
            = folder.addPackage(name, recording::packageOf({{QStringLiteral("main.wf"), QByteArray("new")}}));
        drop(viewport("List"), {QUrl::fromLocalFile(package)});
    }

    bool isCentred()
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const QSize free = (screen.size() - ui.window()->size()) / 2;
        return ui.window()->pos() == screen.topLeft() + QPoint(free.width(), free.height());
    }

    void rightClick(const char *name, int row)
    {
        QApplication::processEvents();
        click(viewport(name), Qt::RightButton, rowCentre(name, row));
    }

    QAction *listAction(const char *name)
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"list2you")
                return widget->findChild<QAction *>(QLatin1StringView(name));
        }
        return nullptr;
    }
};

} // namespace plum
