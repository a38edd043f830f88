// The grammar of editors/vscode, by the tokenizer that VS Code has: every example of the manual and every starter app.
//
//   node grammar_test.cjs SOURCES
'use strict';
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const {createRequire} = require('node:module');

const SKIPPED = 77;
const sources = process.argv[2];
const extension = path.join(sources, 'editors', 'vscode');
let textmate, oniguruma, machine;
try {
    const load = createRequire(path.join(extension, 'package.json'));
    textmate = load('vscode-textmate');
    oniguruma = load('vscode-oniguruma');
    machine = fs.readFileSync(load.resolve('vscode-oniguruma/release/onig.wasm'));
} catch (error) {
    console.log('vscode-textmate and vscode-oniguruma are not installed (tools/setup test does that)');
    process.exit(SKIPPED);
}

async function load() {
    await oniguruma.loadWASM(machine.buffer.slice(machine.byteOffset, machine.byteOffset + machine.byteLength));
    const file = path.join(extension, 'syntaxes', 'plum.tmLanguage.json');
    const registry = new textmate.Registry({
        onigLib: Promise.resolve({
            createOnigScanner: patterns => new oniguruma.OnigScanner(patterns),
            createOnigString: text => new oniguruma.OnigString(text),
        }),
        loadGrammar: async () => textmate.parseRawGrammar(fs.readFileSync(file, 'utf8'), file),
    });
    return registry.loadGrammar('source.plum');
}

// For each line its characters' innermost scopes, joined for the same token.
function scopesOf(grammar, lines) {
    let stack = textmate.INITIAL;
    return lines.map(line => {
        const {tokens, ruleStack} = grammar.tokenizeLine(line, stack);
        stack = ruleStack;
        const scopes = [];
        for (const token of tokens) {
            for (let at = token.startIndex; at < token.endIndex && at < line.length; ++at)
                scopes[at] = token.scopes.slice(1).join(' ');
        }
        return scopes;
    });
}

function examplesOf(page) {
    const text = fs.readFileSync(path.join(sources, 'docs', page), 'utf8');
    return [...text.matchAll(/^```plum[^\n]*\n([^]*?)^```$/gm)].map(found => found[1].trimEnd().split('\n'));
}

function apps() {
    const folder = path.join(sources, 'apps');
    return fs.readdirSync(folder).map(name => path.join(folder, name, 'main.wf')).filter(file => fs.existsSync(file))
        .map(file => fs.readFileSync(file, 'utf8').split(/\r?\n/));
}

const asksForEdition2 = lines => lines.slice(0, 2).some(line => line.startsWith('//edition:2'));
const isHead = /^(support|keyword|variable|punctuation\.accessor)/;

let looked = 0;
const unknown = [];

function check(grammar, lines) {
    const isSecond = asksForEdition2(lines);
    scopesOf(grammar, lines).forEach((scopes, index) => {
        const line = lines[index];
        const where = `${line} in\n${lines.join('\n')}`;
        const start = isSecond ? line.search(/\S/) : 0;
        if (line.trim() === '')
            return;
        ++looked;
        if (line.startsWith('//', start)) {
            assert.ok(scopes[start].startsWith('comment.'), where);
            return;
        }
        const head = line.slice(start).split(' ')[0];
        for (let at = start; at < start + head.length; ++at) {
            if (!isHead.test(scopes[at] || '')) {
                unknown.push(head);
                break;
            }
        }
        // Quotes belong to texts, and what is no text in edition 2 has a meaning of its own.
        for (let at = start + head.length; at < line.length; ++at) {
            if (line[at] === '"')
                assert.match(scopes[at] || '', /string\./, `column ${at + 1} of ${where}`);
            if (isSecond && !/[ ,\t.]/.test(line[at]))
                assert.notStrictEqual(scopes[at] || '', '', `column ${at + 1} of ${where}`);
        }
    });
}

function rangesOf(grammar, text, scope) {
    const lines = text.split('\n');
    return scopesOf(grammar, lines).flatMap((scopes, index) => {
        const found = [];
        scopes.forEach((name, at) => {
            if (!(name || '').includes(scope))
                return;
            if (at > 0 && (scopes[at - 1] || '').includes(scope))
                found[found.length - 1] += lines[index][at];
            else
                found.push(lines[index][at]);
        });
        return found;
    });
}

async function main() {
    const grammar = await load();
    for (const lines of examplesOf('scripting.md'))
        check(grammar, asksForEdition2(lines) ? lines : ['//edition:2', ...lines]);
    for (const lines of examplesOf('tasks.md'))
        check(grammar, lines);
    for (const lines of [...examplesOf('edition-1.md'), ...apps()])
        check(grammar, lines);
    assert.ok(looked > 300, `${looked} lines`);
    assert.deepStrictEqual(unknown, []);

    const second = '//guide:x\n//edition:2\nset.a $"{{b}} {c} ""d"""\nos.tips "e//f", set.a // g\nmouse.move -1:2';
    assert.deepStrictEqual(rangesOf(grammar, second, 'variable.other'), ['a', 'c', 'set.a']);
    assert.deepStrictEqual(rangesOf(grammar, second, 'comment'), ['//guide:x', '//edition:2', '// g']);
    assert.deepStrictEqual(rangesOf(grammar, second, 'string'), ['$"{{b}} {c} ""d"""', '"e//f"']);
    assert.deepStrictEqual(rangesOf(grammar, second, 'constant.numeric'), ['-1:2']);
    assert.deepStrictEqual(rangesOf(grammar, '//edition:2\nmouse.clik\n mouse.click', 'support.function'), ['click']);

    const first = 'set.a "b_,_c"\nkeyboard.send x+?++(set.a)\n  mouse.click\nmouse.clik\n//edition:2\nmouse.type 1';
    assert.deepStrictEqual(rangesOf(grammar, first, 'support.function'), ['send']);
    assert.deepStrictEqual(rangesOf(grammar, first, 'constant.character.escape'), ['_,_']);
    assert.deepStrictEqual(rangesOf(grammar, first, 'placeholder'), ['+?+']);
    assert.deepStrictEqual(rangesOf(grammar, first, 'variable.other'), ['a', 'set.a']);
    assert.deepStrictEqual(rangesOf(grammar, first, 'constant.numeric'), []); // still edition 1
}

main().catch(error => {
    console.error(error);
    process.exit(1);
});
