#pragma once

#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <QStringList>

#include <optional>

namespace plum::recording {

// One script of docs/scripting.md. Around it, HTML comments say what it finds and does:
//
//   <!-- given: clipboard some text          what is there before: see ExampleBench::arrange
//        does: mouse 2 ; mouse 4 -->         all events but the pauses before lines, in order
//   ```plum
//   mouse.l_down
//   ```
//   <!-- shows: name = value -->             a variable afterwards, \r and \n written so
//
// A block "plum error" is a script that ends with a run-time error.
struct ManualExample
{
    int line = 0; // of the document, counted from 1
    bool isError = false;
    QStringList script;
    QStringList given;
    std::optional<QStringList> does;
    QStringList shows;
};

// All of them, in the document's order.
const QList<ManualExample> &manualExamples();

// A text of the document with its \r and \n as they are meant.
QString unescaped(QString text);

// A bench whose surroundings an example's "given" lines arrange.
class ExampleBench : public ScriptBench
{
public:
    explicit ExampleBench(const ManualExample &example);

    QStringList happened() const;

private:
    void arrange(const QString &what, const QString &rest);
    void paint(QPoint at, quint32 colour);
    void arrangePicture(const QString &name, QPoint at);

    test::TemporaryFiles m_files;
};

} // namespace plum::recording
