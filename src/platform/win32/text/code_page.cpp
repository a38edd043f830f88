#include "platform/win32/text/code_page.h"

#include <optional>
#include <qt_windows.h>

namespace plum {

namespace {

std::optional<QString> converted(unsigned codePage, QByteArrayView bytes)
{
    const auto length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), length, nullptr, 0);
    if (needed == 0)
        return {};
    QString text(needed, Qt::Uninitialized);
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), length,
        reinterpret_cast<wchar_t *>(text.data()), needed);
    return text;
}

// Character by character: the system says only that something is wrong, not where.
QString withReplacements(unsigned codePage, QByteArrayView bytes)
{
    QString text;
    while (!bytes.isEmpty()) {
        const bool isDouble
            = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(bytes.front())) && bytes.size() > 1;
        const qsizetype length = isDouble ? 2 : 1;
        const std::optional<QString> character = converted(codePage, bytes.first(length));
        text += character.value_or(QChar(QChar::ReplacementCharacter));
        bytes = bytes.sliced(character ? length : 1);
    }
    return text;
}

} // namespace

QString fromCodePage(unsigned codePage, QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return {};
    if (codePage == CP_UTF8)
        return QString::fromUtf8(bytes);
    const std::optional<QString> text = converted(codePage, bytes);
    return text ? *text : withReplacements(codePage, bytes);
}

QByteArray toCodePage(unsigned codePage, QStringView text)
{
    if (text.isEmpty())
        return {};
    if (codePage == CP_UTF8)
        return text.toUtf8();
    const auto *characters = reinterpret_cast<const wchar_t *>(text.utf16());
    const auto length = static_cast<int>(text.size());
    // Without the flag a character that is missing would become one that looks like it.
    const int needed
        = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, characters, length, nullptr, 0, "?", nullptr);
    QByteArray bytes(needed, Qt::Uninitialized);
    WideCharToMultiByte(
        codePage, WC_NO_BEST_FIT_CHARS, characters, length, bytes.data(), needed, "?", nullptr);
    return bytes;
}

} // namespace plum
