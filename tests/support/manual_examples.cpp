#include "support/manual_examples.h"

#include "recording/recording_commands.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

namespace plum::recording {

using namespace Qt::StringLiterals;

namespace {

// Reads the document's comments and blocks from the top.
class ExampleReader
{
public:
    explicit ExampleReader(ManualPage page)
        : m_page(page)
    {
    }

    QList<ManualExample> read(const QStringList &lines)
    {
        for (m_line = 0; m_line < lines.size(); ++m_line)
            take(lines[m_line]);
        finish();
        return m_examples;
    }

private:
    void take(const QString &line)
    {
        if (m_inScript && line == "```"_L1)
            m_inScript = false;
        else if (m_inScript)
            m_example.script += line;
        else if (line.startsWith("```plum"_L1))
            begin(line.endsWith(" error"_L1));
        else if (m_inComment || line.startsWith("<!--"_L1))
            takeComment(line);
    }

    void begin(bool isError)
    {
        if (!m_example.script.isEmpty())
            finish();
        m_example.line = m_line + 1;
        m_example.isError = isError;
        m_inScript = true;
    }

    void takeComment(QString line)
    {
        m_inComment = !line.endsWith("-->"_L1);
        line.remove(u"<!--"_s).remove(u"-->"_s);
        const QString word = line.section(u':', 0, 0).trimmed();
        const QString rest = line.section(u':', 1).trimmed();
        if (word == "shows"_L1 && m_page == ManualPage::Edition1) {
            m_example.shows += rest;
            return;
        }
        // What comes before an example ends the one before it.
        if (!m_example.script.isEmpty())
            finish();
        if (word == "given"_L1)
            m_example.given += rest;
        else if (word == "does"_L1)
            m_example.does = rest.split(u" ; "_s, Qt::SkipEmptyParts);
        else if (word == "shows"_L1)
            m_example.shows = rest.split(u" | "_s);
        else if (word == "error"_L1)
            m_example.error = rest;
        else
            ADD_FAILURE() << "line " << m_line + 1 << ": unknown word " << word.toStdString();
    }

    void finish()
    {
        if (!m_example.script.isEmpty())
            m_examples += m_example;
        m_example = {};
    }

    ManualPage m_page;
    QList<ManualExample> m_examples;
    ManualExample m_example;
    int m_line = 0;
    bool m_inScript = false;
    bool m_inComment = false;
};

} // namespace

QString unescaped(QString text)
{
    return text.replace(u"\\r"_s, u"\r"_s).replace(u"\\n"_s, u"\n"_s);
}

const QList<ManualExample> &manualExamples(ManualPage page)
{
    const auto read = [](ManualPage which, const char *name) {
        QFile file(QStringLiteral(PLUM_DOCS_FOLDER "/") + QLatin1StringView(name));
        if (!file.open(QIODevice::ReadOnly))
            ADD_FAILURE() << "no " << name;
        return ExampleReader(which).read(QString::fromUtf8(file.readAll()).split(u'\n'));
    };
    static const QList<ManualExample> first = read(ManualPage::Edition1, "edition-1.md");
    static const QList<ManualExample> second = read(ManualPage::Edition2, "scripting.md");
    return page == ManualPage::Edition1 ? first : second;
}

ExampleBench::ExampleBench(const ManualExample &example)
{
    state.runctx[0] = m_files.folder() + u"/main.wf"_s;
    auto &screen = static_cast<RecordingScreen &>(platform.screen());
    screen.size = {200, 150};
    screen.pixels.assign(200 * 150, 0);
    for (const QString &given : example.given)
        arrange(given.section(u' ', 0, 0), given.section(u' ', 1));
    platform.log.clear();
}

QStringList ExampleBench::happened() const
{
    QStringList events = platform.log.lines();
    // The bench asks at the end, so that the variables stay, unless the example has stopped before.
    if (!events.isEmpty() && events.last() == "input |"_L1)
        events.removeLast();
    events.removeAll(u"wait 10"_s);
    return events;
}

void ExampleBench::arrange(const QString &what, const QString &rest)
{
    const QStringList words = rest.split(u' ');
    const auto number = [&words](int index) { return words.value(index).toInt(); };
    if (what == "clipboard"_L1) {
        platform.clipboard().setText(rest);
    } else if (what == "typed"_L1) {
        launcher.keywordBox = rest;
    } else if (what == "pointer"_L1) {
        platform.pointer().moveTo({number(0), number(1)});
    } else if (what == "http"_L1) {
        http.answer = {number(0), {}, rest.section(u' ', 1).toUtf8()};
    } else if (what == "javascript"_L1) {
        static_cast<RecordingJavaScript &>(platform.javaScript()).answer.value = rest;
    } else if (what == "file"_L1) {
        m_files.write(words[0], unescaped(rest.section(u' ', 1)).toUtf8());
    } else if (what == "pixel"_L1) {
        paint({number(0), number(1)}, words[2].toUInt(nullptr, 16));
    } else if (what == "picture"_L1) {
        arrangePicture(words[0], {number(1), number(2)});
    } else if (what == "window"_L1) {
        auto &windows = static_cast<RecordingWindows &>(platform.windows());
        windows.foregroundWindow = windows.windowUnderPointer = number(0);
        windows.rectangles[number(0)] = QRect(number(1), number(2), number(3), number(4));
    } else if (what == "answer"_L1) {
        answers += rest;
    } else if (what == "titled"_L1) {
        static_cast<RecordingWindows &>(platform.windows()).titles[words[1]] = number(0);
    } else {
        ADD_FAILURE() << "unknown surroundings: " << what.toStdString();
    }
}

void ExampleBench::paint(QPoint at, quint32 colour)
{
    auto &screen = static_cast<RecordingScreen &>(platform.screen());
    screen.pixels[static_cast<size_t>(at.y() * screen.size.width() + at.x())] = colour;
}

// A small picture file that the screen shows at `at`. Its corners differ, so that all of it is looked for.
void ExampleBench::arrangePicture(const QString &name, QPoint at)
{
    QImage picture(8, 8, QImage::Format_RGB32);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            const auto colour = static_cast<quint32>(0xFF0000 + y * 8 + x);
            picture.setPixel(x, y, 0xFF000000U | colour);
            paint(at + QPoint(x, y), colour);
        }
    }
    ASSERT_TRUE(picture.save(m_files.folder() + u'/' + name));
}

} // namespace plum::recording
