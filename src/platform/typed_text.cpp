#include "platform/typed_text.h"

namespace plum {

TypedText charactersOf(QStringView text)
{
    TypedText typed{{}, true};
    for (qsizetype units = 0; !text.isEmpty(); text = text.sliced(units)) {
        units = unitsOfCharacter(text);
        char32_t character = text[0].unicode();
        if (character == U'\r')
            character = U'\n';
        else if (units == 2)
            character = QChar::surrogateToUcs4(text[0], text[1]);
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

qsizetype unitsOfCharacter(QStringView text)
{
    const bool isPair = text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate();
    return isPair || text.startsWith(u"\r\n") ? 2 : 1;
}

} // namespace plum
