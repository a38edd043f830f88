#pragma once

#include "engine/command_table.h"
#include "sheet/sheet.h"

#include <QString>

#include <optional>

namespace plum {

// What the effects of a sheet are about, as texts that mean the same in every library:
//
//   app:data/x.txt        a file in the app's own folder; "app:" is the folder, without its scripts
//   apps:note/notes.txt   a file of another app
//   program:config/...    any other file in the program folder, in which relative paths begin
//   desktop:x.txt         a file on the desktop
//   file:/etc/hosts       any other file; with "/" at the end a folder and what is in it
//   host:example.org      a server
//   name:notepad.exe      a program that the system looks up, or what else is opened by its name
//   text                  a title, for windows

// What stands in a text for something that is not known before the run, for the app's own folder, and for the
// desktop's. They are no characters, so no script has them.
inline constexpr QChar anyText{u'\uFDD0'};
inline constexpr QChar appFolderText{u'\uFDD1'};
inline constexpr QChar desktopText{u'\uFDD2'};

// What a path means; nothing when that cannot be said. Of a path with an unknown part it is the folder above.
std::optional<QString> fileObject(const QString &path, ObjectForm form);

// The server that an address leads to; nothing when that cannot be said, or it leads to none.
std::optional<QString> hostObject(const QString &address);

// What is started or opened with this text; nothing when that can be anything.
std::optional<QString> runObject(const QString &target);

// Whether a text is an address on the web rather than a path.
bool isWebAddress(const QString &text);

bool isFolderObject(const QString &object);

// A script of an app: it is never part of the app's folder when something is written.
bool isScriptObject(const QString &object);

// What is named by itself or not at all: other apps' folders and the program's.
bool isApart(const QString &object);

} // namespace plum
