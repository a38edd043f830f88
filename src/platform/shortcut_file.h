#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace plum {

class TextCodec;

struct ShortcutTarget
{
    QString path; // with "\", as the shortcut has it; environment variables are not expanded
    bool isRelative = false; // to the folder that holds the shortcut
};

// Reads what a Windows shell link (a `.lnk` file) points to: the local or network path of its link
// information, else its target with environment variables, else its relative path. Nothing for bytes that are
// no shell link or name none of these; no length in the file is trusted. `codec` decodes 8-bit texts.
std::optional<ShortcutTarget> readShortcut(QByteArrayView bytes, TextCodec &codec);

} // namespace plum
