#pragma once

#include "desktop/support/hands.h"
#include "desktop/support/server_view.h"
#include "support/x_server.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

namespace plum {

// An X server in the window of another one. What is pressed in the outer one comes to the inner one from a
// keyboard and a mouse, as from a hand; what programs press in the inner one comes from its XTEST devices.
class NestedDesktop : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // A program folder of its own, so that it can have settings of its own.
    QString folder() const { return m_folder.path(); }
    void writeOptions(const QByteArray &content) const;

    // Starts `program`, plum or plumkit, on the inner server.
    void start(QProcess &process, const QString &program, const QStringList &arguments) const;

    // Writes a script and starts it on the inner server. Its first line moves the pointer; returns when that
    // has been seen.
    void startScript(const QByteArray &script, const QStringList &kitArguments = {});

    // The status with which it ended; -1 when it did not.
    int status();

    QProcess &program() { return m_program; }
    QString innerDisplay() const { return m_innerDisplay; }

    // Of what is down in the inner server without the hand's own Esc.
    bool isAnythingDown();

    std::optional<Hands> hand; // in the outer server, over the inner one's window
    std::optional<ServerView> view; // of the inner one

private:
    QTemporaryDir m_folder;
    std::optional<XServer> m_outer;
    QProcess m_inner;
    QString m_innerDisplay;
    QProcess m_program;
};

} // namespace plum
