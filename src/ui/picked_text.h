#pragma once

#include "engine/command_call.h"

#include <QStringList>

#include <functional>

namespace plum {

// What the editor asks for when something is to be picked from the screen.
struct PickRequest
{
    Edition edition = Edition::Two; // of the script that gets the lines
    QString folder; // of its app, as the system writes it; empty while there is none
};

// What was picked, for the script and for the user. Without lines the user gave up, or nothing could be
// taken.
struct PickedText
{
    QStringList lines;
    QString note;
};

using PickFromScreen
    = std::function<void(const PickRequest &request, std::function<void(const PickedText &)> then)>;

} // namespace plum
