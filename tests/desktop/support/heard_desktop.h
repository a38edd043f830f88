#pragma once

#include "desktop/support/launcher_desktop.h"
#include "desktop/support/screen_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <optional>

namespace plum {

// A desktop for somebody who has only the keyboard, and hears what programs say.
class HeardDesktop : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        reader.emplace(server());
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    }

    void TearDown() override
    {
        reader.reset();
        LauncherDesktop::TearDown();
        qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
    }

    bool hears(const QString &role, const QString &beginning, const QString &state = {})
    {
        const bool isHeard = eventually([&] {
            return std::ranges::any_of(reader->look(), [&](const Node &node) {
                return node.role == role && node.name.startsWith(beginning)
                    && (state.isEmpty() || node.is(state));
            });
        });
        if (!isHeard) {
            for (const Node &node : reader->look())
                std::cerr << node.role.toStdString() << " \"" << node.name.toStdString() << "\" "
                          << node.states.join(u' ').toStdString() << '\n';
        }
        return isHeard;
    }

    bool hearsNoMore(const QString &role, const QString &beginning)
    {
        return eventually([&] { return reader->find(role, beginning).role.isEmpty(); });
    }

    void expectKeyboardAt(const QString &role, const QString &name)
    {
        ASSERT_TRUE(hears(role, name, QStringLiteral("focused"))) << name.toStdString();
    }

    // Goes on with Tab until the control has the keyboard; each time once the key before has led somewhere.
    void tabTo(const QString &role, const QString &name)
    {
        constexpr int mostStops = 20;
        QStringList stop = stops();
        for (int i = 0; i < mostStops && !reader->find(role, name).is(QStringLiteral("focused")); ++i) {
            hands->key(QStringLiteral("Tab"));
            const QStringList before = stop;
            eventually([&] { return (stop = stops()) != before; });
        }
        expectKeyboardAt(role, name);
    }

    // What has the keyboard, by place and name; a page and what is in it both have it.
    QStringList stops()
    {
        QStringList all;
        int place = 0;
        for (const Node &node : reader->look()) {
            ++place;
            if (node.is(QStringLiteral("focused")))
                all += QString::number(place) + u' ' + node.role + u' ' + node.name;
        }
        return all;
    }

    std::optional<ScreenReader> reader;
};

} // namespace plum
