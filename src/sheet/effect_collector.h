#pragma once

#include "engine/command_table.h"
#include "sheet/possible_text.h"
#include "sheet/sheet.h"

#include <functional>

namespace plum {

// Puts the effects of command lines and references into a sheet, by what the rows of their tables say.
class EffectCollector
{
public:
    using FieldValue = std::function<PossibleText(int field)>;

    // A line of `info`, whose fields may have these values.
    void take(const CommandInfo &info, const FieldValue &valueOf);

    // A reference such as os.get_clipboard, wherever it stands.
    void takeReference(QStringView reference);

    // Whether a reference that learns something may stand in the text. Most texts are told apart by this
    // alone.
    static bool mayLearn(QStringView text);

    const Sheet &sheet() const { return m_sheet; }
    Sheet &sheet() { return m_sheet; }

    // Draws the conclusions that need all lines: what the script can write and start is any program.
    void finish();

private:
    void takeEffects(const CommandEffects &effects, const FieldValue &valueOf);
    void takeFile(Effect effect, const PossibleText &path, ObjectForm form, bool takesAddresses);
    void takeContact(const PossibleText &address, bool isOnlyAddress);
    void takePage(const PossibleText &page);
    void takeRun(const PossibleText &target, bool takesAddresses);
    void takeText(Effect effect, const PossibleText &text);
    void takeExpression(const PossibleText &expression);

    Sheet m_sheet;
};

// What a reference may be worth; nothing for those of variables.
PossibleText valueOfReference(QStringView reference);

// What the variables of a line of `info` receive.
PossibleText resultOf(const CommandInfo &info, const EffectCollector::FieldValue &valueOf);

// Whether a row has to name its effects: it touches the desktop, files or servers.
bool mustNameEffects(const CommandInfo &info);

} // namespace plum
