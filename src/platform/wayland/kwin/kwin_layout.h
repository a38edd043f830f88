#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <memory>
#include <optional>
#include <unordered_map>

struct xkb_context;
struct xkb_keymap;

namespace plum {

// How a character is typed: the kernel's numbers of the key, and of those that are held meanwhile.
struct LayoutStroke
{
    quint16 code = 0;
    quint16 shift = 0; // 0: not held
    quint16 levelThree = 0; // the same for the key that is often called AltGr
};

// What the keys of the user's keyboard mean, as the compositor tells every program.
class KWinLayout
{
public:
    // The kernel's numbers of keys are less than this.
    static constexpr quint16 codes = 768;

    KWinLayout();
    ~KWinLayout();
    Q_DISABLE_COPY_MOVE(KWinLayout)

    // A map in the format of XKB. What it does not say nobody can type.
    void setKeymap(const QByteArray &text);

    // Which of the map's layouts is in force.
    void setGroup(quint32 group);
    void setCapsLocked(bool isLocked);

    // Nothing for a character that the layout lacks.
    std::optional<LayoutStroke> strokeFor(char32_t character);

private:
    struct Freer
    {
        void operator()(xkb_context *context) const;
        void operator()(xkb_keymap *keymap) const;
    };

    void fill();
    quint16 codeOf(quint32 symbol) const;

    std::unique_ptr<xkb_context, Freer> m_context;
    std::unique_ptr<xkb_keymap, Freer> m_keymap;
    quint32 m_group = 0;
    bool m_isCapsLocked = false;
    bool m_isFilled = false;
    std::unordered_map<char32_t, LayoutStroke> m_strokes;
};

} // namespace plum
