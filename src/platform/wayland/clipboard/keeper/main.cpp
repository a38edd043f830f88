#include "platform/linux/keeper/keeper_process.h"
#include "platform/wayland/clipboard/keeper/selection_keeper.h"

int main(int argc, char **argv)
{
    plum::keeper::SelectionKeeper keeper;
    return plum::keeper::runKeeper(argc, argv,
        {.takeOver = [&](std::string text) { return keeper.takeOver(std::move(text)); },
            .serve = [&] { keeper.serve(); }});
}
