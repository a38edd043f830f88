#pragma once

#include "desktop/support/desktop_test.h"

namespace plum {

// A desktop on which the real program runs scripts. `Base` starts it.
template <typename Base> class ScriptTest : public Base
{
protected:
    // Starts the program with a script of these lines and returns at once.
    void start(const QStringList &lines)
    {
        QFile script(path());
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write(lines.join(QStringLiteral("\r\n")).toUtf8());
        script.close();
        Base::server().start(m_program, QStringLiteral(PLUM_PROGRAM), {path()});
        ASSERT_TRUE(m_program.waitForStarted(test::patience));
    }

    // Waits for the program's end, which has to be a good one.
    void expectGoodEnd()
    {
        EXPECT_TRUE(m_program.waitForFinished(test::patience));
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_program.exitCode(), 0);
        EXPECT_EQ(m_program.readAllStandardError().toStdString(), "");
    }

    void run(const QStringList &lines)
    {
        start(lines);
        expectGoodEnd();
    }

    QProcess &program() { return m_program; }

    void TearDown() override
    {
        m_program.kill();
        m_program.waitForFinished();
        Base::TearDown();
    }

private:
    QString path() const { return Base::folder() + QStringLiteral("/test.wf"); }

    QProcess m_program;
};

// A point as scripts write it.
inline QString asText(QPoint point)
{
    return QStringLiteral("%1:%2").arg(point.x()).arg(point.y());
}

} // namespace plum
