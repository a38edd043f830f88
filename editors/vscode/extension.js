// The client of `plumkit lsp`, the way to `plumkit debug`, and commands that run the script in front in a terminal.
'use strict';
const vscode = require('vscode');
const {LanguageClient} = require('vscode-languageclient/node');

let client;

function plumkit() {
    return vscode.workspace.getConfiguration('plum').get('plumkit');
}

// The script on the screen, saved; nothing when there is none.
async function savedScript() {
    const document = vscode.window.activeTextEditor?.document;
    if (document?.languageId !== 'plum' || !(await document.save()) || document.isUntitled)
        return undefined;
    return document;
}

async function runInTerminal(verb) {
    const script = await savedScript();
    if (!script)
        return;
    const execution = new vscode.ProcessExecution(plumkit(), [verb, script.fileName]);
    const folder = vscode.workspace.getWorkspaceFolder(script.uri) ?? vscode.TaskScope.Workspace;
    const task = new vscode.Task({type: 'plum', verb}, folder, verb, 'Plum', execution);
    task.presentationOptions = {clear: true};
    await vscode.tasks.executeTask(task);
}

function debugging(program) {
    return {type: 'plum', request: 'launch', name: 'Debug', program};
}

async function debug() {
    const script = await savedScript();
    if (script)
        await vscode.debug.startDebugging(vscode.workspace.getWorkspaceFolder(script.uri), debugging(script.fileName));
}

const debugAdapters = {
    createDebugAdapterDescriptor: () => new vscode.DebugAdapterExecutable(plumkit(), ['debug']),
};

// Without a launch.json the script in front is meant.
const debugConfigurations = {
    resolveDebugConfiguration: (folder, configuration) => configuration.type ? configuration : debugging('${file}'),
};

async function start() {
    const command = plumkit();
    client = new LanguageClient('plum', 'Plum', {command, args: ['lsp']}, {documentSelector: [{language: 'plum'}]});
    try {
        await client.start();
    } catch (error) {
        vscode.window.showErrorMessage(
            `Plum: "${command}" cannot be started. The setting plum.plumkit says where it is.`);
    }
}

async function activate(context) {
    context.subscriptions.push(
        vscode.commands.registerCommand('plum.run', () => runInTerminal('run')),
        vscode.commands.registerCommand('plum.dry', () => runInTerminal('dry')),
        vscode.commands.registerCommand('plum.debug', debug),
        vscode.debug.registerDebugAdapterDescriptorFactory('plum', debugAdapters),
        vscode.debug.registerDebugConfigurationProvider('plum', debugConfigurations),
        vscode.workspace.onDidChangeConfiguration(async change => {
            if (!change.affectsConfiguration('plum.plumkit'))
                return;
            await deactivate();
            await start();
        }));
    await start();
}

async function deactivate() {
    const ending = client;
    client = undefined;
    if (ending?.isRunning())
        await ending.stop();
}

module.exports = {activate, deactivate};
