#pragma once

#include "engine/editions/run_view.h"
#include "engine/script_vocabulary.h"

#include <QList>

namespace plum {

// An argument of a line that a run stands before, as it is written there.
struct LineArgument
{
    QString name; // of its field
    QString written;
    bool isValue = false; // it stands for itself: a word, the name of a variable
};

// Those of the line of a frame.
QList<LineArgument> argumentsOf(const RunView &run, int frame, const ScriptVocabulary &vocabulary);

// What an argument comes to if the line is carried out now.
Evaluation valueOf(RunView &run, int frame, const LineArgument &argument);

} // namespace plum
