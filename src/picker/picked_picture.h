#pragma once

#include "picker/desktop_view.h"
#include "search/picture_trial.h"

#include <QStringList>

namespace plum {

// A part of the desktop as a picture that a script looks for.
struct PickedPicture
{
    QString fileName; // in the app's folder; empty when it could not be written
    QStringList report; // how well it does, a sentence each
};

// Writes the part as a new file into `folder`, and looks for it on the main screen at once, as a script does.
PickedPicture savePicture(const DesktopView &view, const QRect &part, const QString &folder);

// The sentences about a picture that was tried.
QStringList sentencesOf(const PictureTrial &trial);

} // namespace plum
