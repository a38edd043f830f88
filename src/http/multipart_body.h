#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class QIODevice;

namespace plum {

class TextCodec;

// The pieces of a form with one file in it, as browsers post it (multipart/form-data).

// A text of `count` random letters and digits.
QString RandomAlnum(int count);

// What separates the parts: 27 hyphens and 13 random letters and digits.
QString MakeBoundary();

// The lines between the first boundary and the file's bytes. `file` is the path as the script gave it, whole.
QString PartHeader(const QString &field, const QString &file, const QString &contentType);

// The text in the system's 8-bit encoding: one byte a character for ASCII.
QByteArray TextToBytes(const QString &text, TextCodec &codec);

// The bytes of the file at the system path `path`, open for reading; null when it cannot be read.
std::unique_ptr<QIODevice> ReadFileBytes(const QString &path);

// The whole body: boundary, header, the file's bytes, closing boundary. It reads `fileBytes` piece by piece
// as it is read itself, so a large file needs no memory. Its size is fixed when it is made; a file that
// shrinks afterwards makes reading fail.
std::unique_ptr<QIODevice> BuildMultipartBody(std::unique_ptr<QIODevice> fileBytes, const QString &boundary,
    const QString &partHeader, TextCodec &codec);

} // namespace plum
