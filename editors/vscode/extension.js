// The client of `plumkit lsp`, and commands that run the script in front in a terminal.
'use strict';
const vscode = require('vscode');
const {LanguageClient} = require('vscode-languageclient/node');

let client;

function plumkit() {
    return vscode.workspace.getConfiguration('plum').get('plumkit');
}

// Runs what is on the screen, so it is saved before.
async function runInTerminal(verb) {
    const editor = vscode.window.activeTextEditor;
    if (!editor || editor.document.languageId !== 'plum')
        return;
    if (!(await editor.document.save()) || editor.document.isUntitled)
        return;
    const execution = new vscode.ProcessExecution(plumkit(), [verb, editor.document.fileName]);
    const folder = vscode.workspace.getWorkspaceFolder(editor.document.uri) ?? vscode.TaskScope.Workspace;
    const task = new vscode.Task({type: 'plum', verb}, folder, verb, 'Plum', execution);
    task.presentationOptions = {clear: true};
    await vscode.tasks.executeTask(task);
}

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
