#include "platform/typed_text.h"

namespace plum {

TypedText charactersOf(QStringView text)
{
    TypedText typed{{}, true};
    for (qsizetype at = 0; at < text.size(); ++at) {
        char32_t character = text[at].unicode();
        if (character == U'\r') {
            character = U'\n';
            at += at + 1 < text.size() && text[at + 1] == u'\n' ? 1 : 0;
        } else if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            character = QChar::surrogateToUcs4(text[at], text[at + 1]);
            ++at;
        }
        const bool isKey = character == U'\n' || character == U'\t';
        const bool isControl = !isKey && (character < 0x20 || (character >= 0x7f && character < 0xa0));
        if (isControl || QChar::isSurrogate(character)) {
            typed.isWhole = false;
            break;
        }
        typed.characters.push_back(character);
    }
    return typed;
}

} // namespace plum
