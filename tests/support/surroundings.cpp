#include "support/surroundings.h"

#include "recording/recording_commands.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <gtest/gtest.h>

namespace plum::recording {

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 8; // pixels, of the picture

// Its corners differ, so that all of it is looked for.
quint32 colourAt(int x, int y)
{
    return static_cast<quint32>(0xFF0000 + y * side + x);
}

} // namespace

QString unescaped(QString text)
{
    return text.replace(u"\\r"_s, u"\r"_s).replace(u"\\n"_s, u"\n"_s);
}

Surroundings::Surroundings(ScriptBench &bench, QString folder)
    : m_bench(bench)
    , m_folder(std::move(folder))
{
    constexpr QSize size(200, 150);
    m_bench.platform.screen().size = size;
    m_bench.platform.screen().pixels.assign(static_cast<size_t>(size.width() * size.height()), 0);
}

void Surroundings::arrange(const QString &words)
{
    const QString what = words.section(u' ', 0, 0);
    const QString rest = words.section(u' ', 1);
    const QString behindFirst = rest.section(u' ', 1);
    const auto word = [&rest](int index) { return rest.section(u' ', index, index); };
    const auto number = [&word](int index) { return word(index).toInt(); };
    RecordingPlatform &on = m_bench.platform;
    if (what == "clipboard"_L1) {
        on.clipboard().setText(rest);
    } else if (what == "typed"_L1) {
        m_bench.launcher.keywordBox = rest;
    } else if (what == "pointer"_L1) {
        on.pointer().moveTo({number(0), number(1)});
    } else if (what == "http"_L1) {
        m_bench.http.answer = {number(0), {}, behindFirst.toUtf8()};
    } else if (what == "program"_L1) {
        m_bench.programs.result = {ProgramResult::Outcome::Ended, number(0), behindFirst.toUtf8()};
    } else if (what == "javascript"_L1) {
        static_cast<RecordingJavaScript &>(on.javaScript()).answer.value = rest;
    } else if (what == "file"_L1) {
        const QString path = m_folder + u'/' + word(0);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(unescaped(behindFirst).toUtf8());
    } else if (what == "pixel"_L1) {
        paint({number(0), number(1)}, word(2).toUInt(nullptr, 16));
    } else if (what == "drawing"_L1) {
        draw(word(0));
    } else if (what == "picture"_L1) {
        draw(word(0));
        show({number(1), number(2)});
    } else if (what == "window"_L1) {
        on.windows().foregroundWindow = on.windows().windowUnderPointer = number(0);
        on.windows().rectangles[number(0)] = QRect(number(1), number(2), number(3), number(4));
    } else if (what == "titled"_L1) {
        on.windows().titles[behindFirst] = number(0);
    } else if (what == "gone"_L1) {
        on.windows().rectangles.remove(number(0));
    } else {
        ADD_FAILURE() << "unknown surroundings: " << what.toStdString();
    }
}

void Surroundings::paint(QPoint at, quint32 colour)
{
    RecordingScreen &screen = m_bench.platform.screen();
    screen.pixels[static_cast<size_t>(at.y() * screen.size.width() + at.x())] = colour;
}

void Surroundings::draw(const QString &name)
{
    QImage picture(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            picture.setPixel(x, y, 0xFF000000U | colourAt(x, y));
    }
    ASSERT_TRUE(picture.save(m_folder + u'/' + name));
}

void Surroundings::show(QPoint at)
{
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            paint(at + QPoint(x, y), colourAt(x, y));
    }
}

} // namespace plum::recording
