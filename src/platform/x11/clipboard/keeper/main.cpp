#include "platform/linux/keeper/keeper_process.h"
#include "platform/x11/clipboard/keeper/selection_keeper.h"

#include <optional>

int main(int argc, char **argv)
{
    std::optional<plum::keeper::SelectionKeeper> keeper;
    return plum::keeper::runKeeper(argc, argv,
        {.takeOver =
                [&](std::string text) {
                    keeper.emplace(std::move(text));
                    return keeper->takeOver();
                },
            .serve =
                [&] {
                    keeper->offerToManager();
                    keeper->serve();
                }});
}
