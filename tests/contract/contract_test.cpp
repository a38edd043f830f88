#include "contract/contract_test.h"

#include "platform/keyboard.h"
#include "platform/pointer.h"

#include <QApplication>
#include <QFile>

#include <algorithm>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

// Set by the environment of all tests, which cannot hand it to them.
std::unique_ptr<Desktop> theDesktop;
bool isReady = false;

QString nameOf(const testing::TestInfo &test)
{
    return QString::fromLatin1(test.test_suite_name()) + u'.' + QString::fromLatin1(test.name());
}

bool names(const Exception &exception, const QString &testName)
{
    const QString pattern = QString::fromLatin1(exception.test);
    return pattern.endsWith(u'*') ? testName.startsWith(pattern.chopped(1)) : testName == pattern;
}

// Listing the tests must not start a desktop, so it is made with the first test.
class DesktopOfAllTests final : public testing::Environment
{
public:
    DesktopOfAllTests(int argc, char **argv)
        : m_argumentCount(argc)
        , m_arguments(argv)
    {
    }

    void SetUp() override
    {
        isReady = theDesktop->prepare();
        if (isReady) {
            m_application = std::make_unique<QApplication>(m_argumentCount, m_arguments);
            QApplication::setQuitOnLastWindowClosed(false);
        }
    }

    void TearDown() override
    {
        m_application.reset();
        theDesktop.reset();
    }

private:
    int m_argumentCount;
    char **m_arguments;
    std::unique_ptr<QApplication> m_application;
};

} // namespace

Desktop &desktop()
{
    return *theDesktop;
}

const char *exceptionFor(const QString &testName)
{
    for (const Exception &exception : desktop().exceptions()) {
        if (names(exception, testName))
            return exception.reason;
    }
    return nullptr;
}

void ContractTest::SetUp()
{
    ASSERT_TRUE(isReady);
    if (const char *reason = exceptionFor(nameOf(*testing::UnitTest::GetInstance()->current_test_info())))
        GTEST_SKIP() << reason;
    platform = desktop().createPlatform();
}

void ContractTest::TearDown()
{
    if (!platform)
        return;
    platform->pointer().releaseAll();
    platform->keyboard().releaseAll();
}

std::unique_ptr<PeerWindow> ContractTest::openWindow(const QString &title, const QRect &inside)
{
    auto window = desktop().openWindow(*platform, title, inside);
    EXPECT_TRUE(window) << title.toStdString();
    return window;
}

QStringList ContractTest::events(PeerWindow &window, const QStringList &words, qsizetype count, int fields)
{
    EXPECT_TRUE(waitUntil([&] { return window.seen(words).size() >= count; }));
    QStringList found;
    for (const QString &line : window.seen(words))
        found += line.section(u' ', 0, fields - 1);
    return found;
}

void ContractTest::tap(quint8 virtualKey)
{
    platform->keyboard().keyEvent(virtualKey, 0);
    platform->keyboard().keyEvent(virtualKey, Keyboard::KeyUp);
}

// A sentence that holds everywhere again must lose its exception, and one that does not must be found in the
// document.
TEST(Exceptions, nameTestsAndStandInTheDocument)
{
    QFile document(QStringLiteral(PLUM_DOCS_FOLDER) + u"/platforms.md"_s);
    ASSERT_TRUE(document.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(document.readAll()).simplified();

    QStringList tests;
    const testing::UnitTest &all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i) {
        const testing::TestSuite &suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j)
            tests += nameOf(*suite.GetTestInfo(j));
    }
    for (const Exception &exception : desktop().exceptions()) {
        EXPECT_TRUE(std::ranges::any_of(tests, [&](const QString &name) { return names(exception, name); }))
            << exception.test;
        EXPECT_TRUE(text.contains(QString::fromUtf8(exception.reason))) << exception.reason;
    }
}

} // namespace plum::contract

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    plum::contract::theDesktop = plum::contract::Desktop::create();
    testing::AddGlobalTestEnvironment(new plum::contract::DesktopOfAllTests(argc, argv));
    return RUN_ALL_TESTS();
}
