#pragma once

#include "engine/script_engine.h"

#include <functional>
#include <memory>

namespace plum {

class HttpClient;
class InputGate;
class Notices;
class Platform;
class ProgramRunner;
class SearchAnswers;
class SearchObserver;
class StopSignal;
class StorePage;

// The script engine with every namespace, on one platform. The one place where they are wired: the program
// and the benches of its tests differ only in what they hand in.
class ScriptSystem
{
public:
    struct Needs
    {
        Platform &platform;
        Shell &shell; // what scripts start programs with
        Launcher &launcher;
        StorePage &storePage;
        QString executableName;
        StopSignal *stop = nullptr; // what ends runs; without it they go on to their ends

        InputGate *gate = nullptr; // what keeps keys and clicks back; without it nothing does

        // Hears what runs were refused that have a limit. Without it no run has one.
        std::function<void(const QString &sentence)> refused = {};

        SearchObserver *searches = nullptr; // hears of searches of the screen
        SearchAnswers *sights = nullptr; // what they find where there is no screen

        // What a test puts in the place of the program's own.
        Waiter *waiter = nullptr;
        HttpClient *http = nullptr;
        ProgramRunner *programs = nullptr;
        std::function<qint64()> clock = {}; // milliseconds
        Notices *notices = nullptr;
    };

    explicit ScriptSystem(const Needs &needs);
    ~ScriptSystem();
    Q_DISABLE_COPY_MOVE(ScriptSystem)

    ScriptEngine &engine();
    RunState &state() { return engine().state(); }
    RunStart &starts() { return engine().starts(); }
    ScriptVocabulary vocabulary() { return engine().vocabulary(); }

    // A variable that every script of edition 2 finds when it begins.
    void presetVariable(const QString &name, const QString &value);

private:
    void connectRunner(const Needs &needs);

    // The headers of the namespaces stay out of this one: whoever runs scripts does not depend on them.
    struct Parts;
    std::unique_ptr<Parts> m;
};

} // namespace plum
