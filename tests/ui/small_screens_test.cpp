// Boxes and notes on screens that are small for how large things are drawn on them.

#include "engine/launcher.h"
#include "ui/asking/message_boxes.h"
#include "ui/controls/passing_note.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct SmallScreen
{
    QSize pixels;
    const char *scale;
};

class SmallScreensTest : public testing::TestWithParam<SmallScreen>
{
protected:
    SmallScreensTest()
    {
        const QJsonObject screen{{u"name"_s, u"small"_s}, {u"x"_s, 0}, {u"y"_s, 0},
            {u"width"_s, GetParam().pixels.width()}, {u"height"_s, GetParam().pixels.height()},
            {u"logicalDpi"_s, 96}, {u"logicalBaseDpi"_s, 96}, {u"dpr"_s, 1}};
        QFile file(m_folder.filePath(u"screens.json"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QJsonDocument(QJsonObject{{u"screens"_s, QJsonArray{screen}}}).toJson());
        file.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
        qputenv("QT_SCALE_FACTOR", GetParam().scale);
        m_application.emplace(m_argumentCount, m_arguments);
    }

    ~SmallScreensTest() override
    {
        m_application.reset();
        qunsetenv("QT_SCALE_FACTOR");
        qunsetenv("QT_QPA_PLATFORM");
    }

    static QRect available() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    // What holds of every box: it and its buttons are on the screen, with room for a title bar, and its text
    // can be read to the end.
    static void expectFits(const QMessageBox &box)
    {
        constexpr QSize titleBar(0, 30);
        const QSize room = available().size() - titleBar;
        const std::string which = box.text().left(20).toStdString();
        EXPECT_LE(box.height(), room.height()) << which;
        EXPECT_TRUE(available().contains(box.frameGeometry()))
            << which << " at " << box.x() << ',' << box.y() << ' ' << box.width() << 'x' << box.height();
        for (const QAbstractButton *button : box.buttons()) {
            const QRect place(button->mapTo(&box, QPoint()), button->size());
            EXPECT_TRUE(box.rect().contains(place)) << button->text().toStdString();
            EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->text().toStdString();
        }
        for (const char *name : {"qt_msgbox_label", "qt_msgbox_informativelabel"}) {
            const auto *label = box.findChild<QLabel *>(QLatin1StringView(name));
            if (!label)
                continue;
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << name;
            if (const auto *area = box.findChild<QScrollArea *>()) {
                const QRect place(label->mapTo(area->widget(), QPoint()), label->size());
                EXPECT_TRUE(area->widget()->rect().contains(place)) << name;
                EXPECT_EQ(area->verticalScrollBar()->maximum(),
                    area->widget()->height() - area->viewport()->height());
            } else {
                const QRect place(label->mapTo(&box, QPoint()), label->size());
                EXPECT_TRUE(box.rect().contains(place)) << name;
            }
        }
    }

    // `show` waits until the box is closed.
    static void expectBoxFits(const std::function<void()> &show)
    {
        bool isSeen = false;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || !box->isVisible() || isSeen)
                return;
            isSeen = true;
            QApplication::processEvents();
            expectFits(*box);
            box->reject();
        });
        look.start(0);
        show();
        EXPECT_TRUE(isSeen);
    }

private:
    QTemporaryDir m_folder;
    int m_argumentCount = 1;
    char m_name[6] = "small";
    char *m_arguments[2] = {m_name, nullptr};
    std::optional<QApplication> m_application;
};

INSTANTIATE_TEST_SUITE_P(Screens, SmallScreensTest,
    testing::Values(SmallScreen{{800, 600}, "2"}, SmallScreen{{1366, 768}, "1.5"}),
    [](const auto &each) { return each.index == 0 ? "800x600x2" : "1366x768x150"; });

const QString longestKeyword(255, u'k');

QString sentences(int count)
{
    QStringList all;
    for (int i = 0; i < count; ++i)
        all += u"Reads the files of the folder that you name, and writes what it has found there."_s;
    return all.join(u'\n');
}

} // namespace

TEST_P(SmallScreensTest, theScreenIsSmall)
{
    const QSizeF logical = QSizeF(GetParam().pixels) / QByteArray(GetParam().scale).toDouble();
    EXPECT_EQ(available().size(), logical.toSize());
}

TEST_P(SmallScreensTest, messagesFit)
{
    MessageBoxes boxes;
    expectBoxFits([&] { boxes.showMessage({.text = u"Successfully"_s, .meaning = u"操作成功"_s}); });
    expectBoxFits([&] {
        boxes.showMessage({.text = u"Run-time error '13':\n\n"_s + sentences(2) + u"\n\n"_s + longestKeyword
                + u", line 12:\n"_s + QString(200, u'x'),
            .icon = MessageIcon::Critical,
            .systemModal = true});
    });
    expectBoxFits([&] { boxes.showMessage({.text = sentences(60)}); });
}

TEST_P(SmallScreensTest, questionsFit)
{
    MessageBoxes boxes;
    expectBoxFits([&] { boxes.askToDelete(u"确定删除?"_s, u"提示"_s, longestKeyword); });
    expectBoxFits([] { MessageBoxes::askToRun(longestKeyword, sentences(20)); });
    expectBoxFits([] { MessageBoxes::tellSheet(u"chess"_s, sentences(40), true); });
    expectBoxFits(
        [] { MessageBoxes::askRunOrEdit(u"/home/ann/"_s + longestKeyword + u"/some script.wf"_s); });
    expectBoxFits([] { MessageBoxes::askUnsaved(longestKeyword + u" is not saved."_s); });
}

TEST_P(SmallScreensTest, aPassingNoteFitsWithAllOfItsText)
{
    const QString text = longestKeyword + u": stopped at line 12"_s;
    PassingNote::tell(text);
    const QWidget *note = nullptr;
    for (QDeadlineTimer patience(60'000); !note && !patience.hasExpired();) {
        QApplication::processEvents(QEventLoop::AllEvents, 50);
        for (const QWidget *each : QApplication::topLevelWidgets()) {
            if (each->objectName() == u"passingnote"_s && each->isVisible())
                note = each;
        }
    }
    ASSERT_TRUE(note);
    EXPECT_TRUE(available().contains(note->geometry()))
        << note->x() << ',' << note->y() << ' ' << note->width() << 'x' << note->height();
    const auto *label = note->findChild<QLabel *>(u"text"_s);
    EXPECT_TRUE(note->rect().contains(label->geometry()));
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    EXPECT_GE(label->width(), label->minimumSizeHint().width()) << "a word is cut off";
    EXPECT_EQ(label->accessibleName(), text);
}

} // namespace plum
