#pragma once

#include "platform/clipboard.h"

namespace plum {

class HiddenWindow;

// The system's clipboard. Text that was put there stays when the process ends.
class Win32Clipboard final : public Clipboard
{
    Q_OBJECT

public:
    explicit Win32Clipboard(HiddenWindow &window);
    ~Win32Clipboard() override;

    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override { return {}; }
    void outliveProcess() override;

private:
    HiddenWindow &m_window;
};

} // namespace plum
