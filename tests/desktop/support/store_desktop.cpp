#include "desktop/support/store_desktop.h"

#include "store/store_addresses.h"

#include <QJsonArray>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

bool isFree(int port)
{
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost, static_cast<quint16>(port));
}

} // namespace

void StoreDesktop::SetUp()
{
    // The launcher's store has one fixed address.
    const int port = StoreAddresses::built().site.port();
    ASSERT_TRUE(eventually([&] { return isFree(port); })) << "another program serves the store's address";
    shop.emplace(port);
    const int eyesPort = test::freePort();
    m_page.emplace(static_cast<quint16>(eyesPort));
    qputenv("QTWEBENGINE_REMOTE_DEBUGGING", QByteArray::number(eyesPort));
    LauncherDesktop::SetUp();
}

bool StoreDesktop::pageShows(const QString &condition)
{
    return eventually([&] { return m_page->see(condition).toBool(); });
}

QPoint StoreDesktop::pageOrigin()
{
    // The page tells where in it the pointer is; the pointer's place on the screen is known. What the page
    // tells may be late, so two places must say the same.
    const QRect screen = view->clientRectangle(view->root());
    const auto originSeenFrom = [&](QPoint point) {
        // A page that is written or loaded anew hears nothing of what was asked before, so each look asks.
        m_page->see(u"(window.onmousemove = e => window.seenAt = [e.clientX, e.clientY]), 1"_s);
        hands->moveTo(point);
        const QJsonArray seen = m_page->see(u"window.seenAt"_s).toArray();
        return point - QPoint(seen[0].toInt(), seen[1].toInt());
    };
    QPoint origin;
    EXPECT_TRUE(eventually([&] {
        origin = originSeenFrom(screen.center());
        return originSeenFrom(screen.center() + QPoint(40, 30)) == origin;
    }));
    return origin;
}

void StoreDesktop::clickInPage(const QString &selector)
{
    const QString middle
        = u"(() => { const r = document.querySelector('%1').getBoundingClientRect();"
          " return [Math.round(r.x + r.width / 2), Math.round(r.y + r.height / 2)]; })()"_s.arg(selector);
    const QPoint origin = pageOrigin();
    QJsonArray at;
    ASSERT_TRUE(eventually([&] {
        at = m_page->see(middle).toArray();
        return at.size() == 2;
    })) << selector.toStdString();
    hands->click(origin + QPoint(at[0].toInt(), at[1].toInt()));
}

void StoreDesktop::agreeWithEnter()
{
    ASSERT_TRUE(getsFocus(u"asks/install"_s));
    EXPECT_TRUE(
        answersWhenRipe([this] { return isShown(u"asks/asks"_s); }, [this] { hands->key(u"Return"_s); }));
}

void StoreDesktop::bringUpLauncher()
{
    ASSERT_TRUE(bringToFront(see(u"frmSet/frmSet"_s).id));
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
}

} // namespace plum
