// plumkit debug, driven by a client of another maker: breakpoints, steps, variables, expressions, errors and a stop, in
// both editions of the language.
//
//   node debug_client_test.cjs PLUMKIT FOLDER-OF-NODE_MODULES
'use strict';
const assert = require('node:assert');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const {createRequire} = require('node:module');

const SKIPPED = 77;
const [, , plumkit, modules] = process.argv;
let DebugClient;
try {
    ({DebugClient} = createRequire(path.join(modules, 'package.json'))('@vscode/debugadapter-testsupport'));
} catch (error) {
    console.log('@vscode/debugadapter-testsupport is not installed (tools/setup test does that)');
    process.exit(SKIPPED);
}

const folder = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'plum-debug-')));
const patience = 60000;

function script(name, lines, end) {
    const file = path.join(folder, name);
    fs.writeFileSync(file, lines.join(end) + end);
    return file;
}

// Talks to a debugger of its own; what the run printed comes back.
async function withClient(talk) {
    const environment = {...process.env, XDG_RUNTIME_DIR: folder, XDG_CACHE_HOME: folder};
    for (const name of ['DISPLAY', 'WAYLAND_DISPLAY', 'QT_QPA_PLATFORM'])
        delete environment[name];
    // It starts "runtime executable", which for us is a program and its command.
    const client = new DebugClient(plumkit, 'debug', 'plum', {env: environment}, true);
    client.defaultTimeout = patience;
    let printed = '';
    client.on('output', event => printed += event.body.output);
    await client.start();
    try {
        await talk(client);
    } finally {
        await client.stop();
    }
    return printed;
}

async function variablesOf(client, scope) {
    const frames = (await client.stackTraceRequest({threadId: 1})).body.stackFrames;
    const scopes = (await client.scopesRequest({frameId: frames[0].id})).body.scopes;
    const reference = scopes.find(each => each.name === scope).variablesReference;
    const all = (await client.variablesRequest({variablesReference: reference})).body.variables;
    return {reference, values: Object.fromEntries(all.map(each => [each.name, each.value]))};
}

async function edition1() {
    const program = script('old.wf', ['// moves', 'set.at "10:20"', '', 'mouse.move set.at', 'mouse.move "1:1"'], '\r\n');
    const printed = await withClient(async client => {
        // A breakpoint on an empty line goes to the next one that runs.
        await client.hitBreakpoint({program, dry: true}, {path: program, line: 3, verified: true},
            {path: program, line: 4}, {path: program, line: 4, verified: true});
        const {reference, values} = await variablesOf(client, 'Variables');
        assert.deepStrictEqual(values, {at: '10:20'});
        assert.deepStrictEqual((await variablesOf(client, 'This line')).values, {to: '10:20'});
        await client.setVariableRequest({variablesReference: reference, name: 'at', value: '30:40'});
        const shown = await client.evaluateRequest({expression: 'set.at', context: 'hover'});
        assert.strictEqual(shown.body.result, '30:40');
        await Promise.all([client.nextRequest({threadId: 1}),
            client.assertStoppedLocation('step', {path: program, line: 5})]);
        const [ended] = await Promise.all([client.waitForEvent('exited'), client.waitForEvent('terminated'),
            client.continueRequest({threadId: 1})]);
        assert.strictEqual(ended.body.exitCode, 0);
    });
    assert.match(printed, /^4: move 30 40$/m);
}

async function edition2() {
    const program = script('new.wf', ['//edition:2', 'part.run greet,"Ann",text', 'set.other set.text', 'set.a set.nobody',
        'part.start greet,who', '    set.hello $"Hello {who}"', '    part.return set.hello', 'part.end'], '\n');
    await withClient(async client => {
        await Promise.all([client.launch({program, stopOnEntry: true}),
            client.waitForEvent('initialized').then(async () => {
                await client.setExceptionBreakpointsRequest({filters: ['uncaught']});
                await client.configurationDoneRequest();
            }),
            client.assertStoppedLocation('entry', {path: program, line: 2})]);
        await Promise.all([client.stepInRequest({threadId: 1}),
            client.assertStoppedLocation('step', {path: program, line: 6})]);
        const frames = (await client.stackTraceRequest({threadId: 1})).body.stackFrames;
        assert.deepStrictEqual(frames.map(each => [each.name, each.line]), [['greet', 6], ['new.wf', 2]]);
        assert.deepStrictEqual((await variablesOf(client, 'This line')).values, {value: 'Hello Ann'});
        assert.deepStrictEqual((await variablesOf(client, 'Variables')).values, {who: 'Ann'});
        const shown = await client.evaluateRequest({expression: '$"<{who}>"', frameId: frames[0].id, context: 'watch'});
        assert.strictEqual(shown.body.result, '<Ann>');
        await assert.rejects(client.evaluateRequest({expression: 'set.nobody'}), /nobody was never set/);
        await Promise.all([client.stepOutRequest({threadId: 1}),
            client.assertStoppedLocation('step', {path: program, line: 3})]);
        await Promise.all([client.continueRequest({threadId: 1}),
            client.assertStoppedLocation('exception', {path: program, line: 4})]);
        assert.strictEqual((await client.exceptionInfoRequest({threadId: 1})).body.description, 'nobody was never set');
        const [ended] = await Promise.all([client.waitForEvent('exited'), client.continueRequest({threadId: 1})]);
        assert.strictEqual(ended.body.exitCode, 1);
    });
}

// A script that waits is stopped by the editor.
async function stopped() {
    const program = script('long.wf', ['time.sleep "600000"'], '\r\n');
    await withClient(async client => {
        await Promise.all([client.launch({program}), client.configurationSequence()]);
        const [ended] = await Promise.all([client.waitForEvent('exited'), client.terminateRequest()]);
        assert.strictEqual(ended.body.exitCode, 130);
    });
}

async function refused() {
    await withClient(async client => {
        await client.initializeRequest();
        await assert.rejects(client.launchRequest({program: path.join(folder, 'missing.wf')}), /cannot be read/);
        await assert.rejects(client.customRequest('nonsense'), /there is no request/);
    });
}

async function main() {
    await edition1();
    await edition2();
    await stopped();
    await refused();
}

main().then(() => 0, error => {
    console.error(error);
    return 1;
}).then(status => {
    fs.rmSync(folder, {recursive: true, force: true});
    process.exit(status);
});
