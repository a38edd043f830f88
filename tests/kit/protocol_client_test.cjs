// plumkit lsp, driven by a client of another maker: opens, types, completes, explains, goes, renames, outlines, lays
// out and mends, in both editions of the language.
//
//   node protocol_client_test.cjs PLUMKIT FOLDER-OF-NODE_MODULES
'use strict';
const assert = require('node:assert');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const {spawn} = require('node:child_process');
const {createRequire} = require('node:module');
const {pathToFileURL} = require('node:url');

const SKIPPED = 77;
const [, , plumkit, modules] = process.argv;
let protocol;
try {
    protocol = createRequire(path.join(modules, 'package.json'))('vscode-languageserver-protocol/node');
} catch (error) {
    console.log('vscode-languageserver-protocol is not installed (tools/setup test does that)');
    process.exit(SKIPPED);
}

const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'plum-client-'));
const server = spawn(plumkit, ['lsp'], {stdio: ['pipe', 'pipe', 'inherit'], env: {...process.env, XDG_RUNTIME_DIR: folder}});
const connection = protocol.createProtocolConnection(
    new protocol.StreamMessageReader(server.stdout), new protocol.StreamMessageWriter(server.stdin));

// The findings of each document, and who waits for them.
const published = new Map();
let waiting = [];
connection.onNotification(protocol.PublishDiagnosticsNotification.type, found => {
    published.set(found.uri, found.diagnostics);
    waiting = waiting.filter(check => !check());
});

function findings(uri, condition) {
    return new Promise(resolve => {
        const check = () => {
            const found = published.get(uri);
            if (!found || !condition(found))
                return false;
            resolve(found);
            return true;
        };
        if (!check())
            waiting.push(check);
    });
}

class Script {
    constructor(name, text) {
        this.uri = pathToFileURL(path.join(folder, name)).toString();
        this.version = 1;
        this.text = text;
        connection.sendNotification(protocol.DidOpenTextDocumentNotification.type,
            {textDocument: {uri: this.uri, languageId: 'plum', version: 1, text}});
    }

    // In place of what stands between two places of a line.
    type(line, from, to, text) {
        const range = {start: {line, character: from}, end: {line, character: to}};
        connection.sendNotification(protocol.DidChangeTextDocumentNotification.type,
            {textDocument: {uri: this.uri, version: ++this.version}, contentChanges: [{range, text}]});
        const lines = this.text.split('\n');
        lines[line] = lines[line].slice(0, from) + text + lines[line].slice(to);
        this.text = lines.join('\n');
    }

    ask(request, line, character, more = {}) {
        return connection.sendRequest(
            request.type, {textDocument: {uri: this.uri}, position: {line, character}, ...more});
    }

    // The text with edits carried out.
    edited(edits) {
        const lines = this.text.split('\n');
        const offset = place => lines.slice(0, place.line).reduce((sum, line) => sum + line.length + 1, 0) + place.character;
        return [...edits].sort((a, b) => offset(b.range.start) - offset(a.range.start)).reduce(
            (text, edit) => text.slice(0, offset(edit.range.start)) + edit.newText + text.slice(offset(edit.range.end)),
            this.text);
    }
}

async function edition2() {
    const script = new Script('main.wf', '//edition:2\nmouse.clik\nset.who "😀"\nos.tips $"{who}"\n');
    let found = await findings(script.uri, all => all.length === 1);
    assert.deepStrictEqual(
        [found[0].range.start, found[0].code, found[0].severity], [{line: 1, character: 6}, 'syntax', 1]);

    const fixes = await script.ask(protocol.CodeActionRequest, 0, 0,
        {range: found[0].range, context: {diagnostics: found}});
    assert.strictEqual(script.edited(fixes[0].edit.changes[script.uri]).split('\n')[1], 'mouse.click');

    script.type(1, 6, 10, '');
    const offered = await script.ask(protocol.CompletionRequest, 1, 6);
    assert.ok(offered.some(item => item.label === 'd_click' && item.documentation));
    script.type(1, 6, 6, 'click');
    await findings(script.uri, all => all.length === 0);

    const explained = await script.ask(protocol.HoverRequest, 1, 8);
    assert.match(explained.contents.value, /^Clicks the left button\./);

    script.type(1, 6, 11, 'drag 1:2,');
    const help = await script.ask(protocol.SignatureHelpRequest, 1, 15);
    assert.strictEqual(help.activeParameter, 1);
    script.type(1, 6, 15, 'click');

    const defined = await script.ask(protocol.DefinitionRequest, 3, 12);
    assert.deepStrictEqual(defined.range, {start: {line: 2, character: 4}, end: {line: 2, character: 7}});
    const places = await script.ask(protocol.ReferencesRequest, 2, 5, {context: {includeDeclaration: true}});
    assert.strictEqual(places.length, 2);
    assert.strictEqual((await script.ask(protocol.PrepareRenameRequest, 3, 11)).placeholder, 'who');
    const renamed = await script.ask(protocol.RenameRequest, 3, 11, {newName: 'whom'});
    assert.strictEqual(script.edited(renamed.changes[script.uri]),
        '//edition:2\nmouse.click\nset.whom "😀"\nos.tips $"{whom}"\n');
    await assert.rejects(script.ask(protocol.RenameRequest, 3, 11, {newName: '2nd'}), /is no name/);

    const outline = await script.ask(protocol.DocumentSymbolRequest, 0, 0);
    assert.deepStrictEqual(outline.map(item => item.name), ['who']);
    script.type(1, 0, 0, '   ');
    const layout = await script.ask(protocol.DocumentFormattingRequest, 0, 0,
        {options: {tabSize: 4, insertSpaces: true}});
    assert.strictEqual(script.edited(layout).split('\n')[1], 'mouse.click');
}

async function edition1() {
    const script = new Script('old.wf', 'set.who "Ann"\r\nkeyboard.send a+?++(set.who)\r\n');
    await findings(script.uri, all => all.length === 0);
    const renamed = await script.ask(protocol.RenameRequest, 0, 5, {newName: 'name'});
    assert.strictEqual(
        script.edited(renamed.changes[script.uri]), 'set.name "Ann"\r\nkeyboard.send a+?++(set.name)\r\n');
    script.type(0, 8, 13, 'Ann');
    const found = await findings(script.uri, all => all.some(finding => finding.code === 'unquoted-value'));
    assert.deepStrictEqual(found.find(finding => finding.code === 'unquoted-value').range.start, {line: 0, character: 8});
    connection.sendNotification(protocol.DidCloseTextDocumentNotification.type, {textDocument: {uri: script.uri}});
    await findings(script.uri, all => all.length === 0);
}

async function main() {
    connection.listen();
    const started = await connection.sendRequest(
        protocol.InitializeRequest.type, {processId: process.pid, rootUri: null, capabilities: {}});
    assert.strictEqual(started.capabilities.textDocumentSync.change, protocol.TextDocumentSyncKind.Incremental);
    connection.sendNotification(protocol.InitializedNotification.type, {});
    await edition2();
    await edition1();
    const ended = new Promise(resolve => server.on('exit', resolve));
    await connection.sendRequest(protocol.ShutdownRequest.type);
    connection.sendNotification(protocol.ExitNotification.type);
    assert.strictEqual(await ended, 0);
}

main().then(() => 0, error => {
    console.error(error, Object.fromEntries(published));
    return 1;
}).then(status => {
    server.kill();
    fs.rmSync(folder, {recursive: true, force: true});
    process.exit(status);
});
