#pragma once

#include "platform/platform.h"
#include "support/x_server.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace plum {

// A test with an X server of its own, a graphical application on it, and the ports of the real backend.
class X11Test : public testing::Test
{
protected:
    explicit X11Test(const QStringList &windowManager = {});

    void SetUp() override { ASSERT_TRUE(server.isReady()); }

    // Lets the event loop run until `condition` holds; false when it never does.
    static bool waitUntil(const std::function<bool()> &condition);

    // Runs a program on the test's display to its end while the event loop goes on, and returns what it
    // wrote to standard output. A program that cannot be started or fails is a failure of the test.
    QByteArray run(const QString &program, const QStringList &arguments, const QByteArray &input = {});

    // The path of another program of this build.
    static QString builtProgram(const QString &name);

    XServer server;

private:
    int m_argumentCount = 1;
    char m_programName[10] = "x11_tests";
    char *m_arguments[2] = {m_programName, nullptr};
    std::unique_ptr<QGuiApplication> m_application;

protected:
    std::unique_ptr<Platform> platform;
};

} // namespace plum
