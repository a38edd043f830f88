#pragma once

#include "support/script_bench.h"

#include <QPoint>
#include <QString>

namespace plum::recording {

// A text with its \r and \n as they are meant.
QString unescaped(QString text);

// What a script finds around it, on a bench and in a folder, said in words:
//
//   clipboard TEXT              typed TEXT              pointer X Y
//   http STATUS TEXT            program STATUS TEXT     javascript TEXT     what is answered from then on
//   file NAME TEXT              with \r and \n in it
//   pixel X Y RRGGBB            of a screen of 200 by 150
//   drawing NAME                a file with a picture of 8 by 8
//   picture NAME X Y            the same, and the screen shows it there
//   window NUMBER X Y W H       in front and under the pointer
//   titled NUMBER TITLE         gone NUMBER
class Surroundings
{
public:
    Surroundings(ScriptBench &bench, QString folder);

    // Words that are none of these are a failure of the test.
    void arrange(const QString &words);

private:
    void paint(QPoint at, quint32 colour);
    void draw(const QString &name);
    void show(QPoint at);

    ScriptBench &m_bench;
    QString m_folder;
};

} // namespace plum::recording
