#include "archive/wildcards.h"

#include <vector>

namespace plum {

namespace {

struct Token
{
    enum Kind { Literal, AnyText, AnyCharacter, Digit, List } kind;
    QStringView text; // the character, or what stands in the list
    bool isExcluding = false;
};

std::optional<Token> listToken(QStringView content)
{
    Token token{Token::List, content};
    token.isExcluding = content.startsWith(u'!') && content.size() > 1;
    if (token.isExcluding)
        token.text = content.sliced(1);
    for (qsizetype i = 1; i + 1 < token.text.size(); ++i) {
        if (token.text[i] != u'-')
            continue;
        if (token.text[i - 1] > token.text[i + 1])
            return std::nullopt;
        ++i;
    }
    return token;
}

std::optional<std::vector<Token>> parse(QStringView pattern)
{
    std::vector<Token> tokens;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'[') {
            const qsizetype end = pattern.indexOf(u']', i + 1);
            if (end < 0)
                return std::nullopt;
            const QStringView content = pattern.sliced(i + 1, end - i - 1);
            i = end;
            if (content.isEmpty())
                continue; // "[]" stands for no character
            const auto token = listToken(content);
            if (!token)
                return std::nullopt;
            tokens.push_back(*token);
            continue;
        }
        const Token::Kind kind = pattern[i] == u'*' ? Token::AnyText
            : pattern[i] == u'?'                    ? Token::AnyCharacter
            : pattern[i] == u'#'                    ? Token::Digit
                                                    : Token::Literal;
        tokens.push_back({kind, pattern.sliced(i, 1)});
    }
    return tokens;
}

bool isListed(QStringView list, QChar c)
{
    for (qsizetype i = 0; i < list.size(); ++i) {
        const bool isRange = i + 2 < list.size() && list[i + 1] == u'-';
        if (isRange ? list[i] <= c && c <= list[i + 2] : list[i] == c)
            return true;
        if (isRange)
            i += 2;
    }
    return false;
}

bool matches(const Token &token, QChar c)
{
    switch (token.kind) {
    case Token::Literal:
        return token.text[0] == c;
    case Token::Digit:
        return c >= u'0' && c <= u'9';
    case Token::List:
        return isListed(token.text, c) != token.isExcluding;
    case Token::AnyText:
    case Token::AnyCharacter:
        break;
    }
    return true;
}

} // namespace

std::optional<bool> matchesWildcards(QStringView text, QStringView pattern)
{
    const auto tokens = parse(pattern);
    if (!tokens)
        return std::nullopt;

    // After a mismatch only the last "*" has to take one character more; earlier ones need no second try.
    size_t token = 0;
    qsizetype at = 0;
    std::optional<size_t> star;
    qsizetype starEnd = 0;
    while (at < text.size()) {
        if (token < tokens->size() && (*tokens)[token].kind == Token::AnyText) {
            star = token++;
            starEnd = at;
        } else if (token < tokens->size() && matches((*tokens)[token], text[at])) {
            ++token;
            ++at;
        } else if (star) {
            token = *star + 1;
            at = ++starEnd;
        } else {
            return false;
        }
    }
    while (token < tokens->size() && (*tokens)[token].kind == Token::AnyText)
        ++token;
    return token == tokens->size();
}

} // namespace plum
