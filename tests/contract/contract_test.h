#pragma once

#include "contract/contract_desktop.h"
#include "support/printers.h"
#include "support/wait_until.h"

#include <QPoint>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// Let a failed comparison show the values; they have to be where the types are.
inline void PrintTo(const QPoint &point, std::ostream *out)
{
    *out << point.x() << ',' << point.y();
}
inline void PrintTo(const QRect &rectangle, std::ostream *out)
{
    *out << rectangle.x() << ',' << rectangle.y() << ' ' << rectangle.width() << 'x' << rectangle.height();
}

namespace plum::contract {

using test::waitUntil;

// The desktop of this process.
Desktop &desktop();

// Why a test does not hold on this backend; null when it does.
const char *exceptionFor(const QString &testName);

// The ports of one backend, the same for all of them: the tests use nothing else of a backend. A sentence
// that cannot hold on it is skipped with the reason in its table of exceptions.
class ContractTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    std::unique_ptr<PeerWindow> openWindow(
        const QString &title = QStringLiteral("Peer window"), const QRect &inside = {200, 150, 500, 300});

    // Starts the peer program for a task of `words`; the first names it.
    std::unique_ptr<PeerProgram> start(const QStringList &words) { return desktop().start(words); }

    // Waits until the window's program has seen this many events that begin with one of `words`, and returns
    // these events without what follows their first `fields` words.
    static QStringList events(PeerWindow &window, const QStringList &words, qsizetype count, int fields);

    // Presses and releases a key.
    void tap(quint8 virtualKey);

    QString folder() const { return m_folder.path(); }

    std::unique_ptr<Platform> platform;

private:
    QTemporaryDir m_folder;
};

} // namespace plum::contract
