// Keys for the characters of a text that the user's layout lacks: another map of the keyboard for the moment.

'use strict';

/* exported LentKeys */

const {Clutter, Gio, GLib} = imports.gi;
const KeyboardManager = imports.misc.keyboardManager;

const layoutName = 'plum_typed';

// By their names in XKB.
const typingKeys = ['TLDE', 'BKSL', 'LSGT',
    ...Array.from({length: 12}, (_, i) => `AE${String(i + 1).padStart(2, '0')}`),
    ...Array.from({length: 12}, (_, i) => `AD${String(i + 1).padStart(2, '0')}`),
    ...Array.from({length: 11}, (_, i) => `AC${String(i + 1).padStart(2, '0')}`),
    ...Array.from({length: 10}, (_, i) => `AB${String(i + 1).padStart(2, '0')}`)];

var LentKeys = class {
    constructor() {
        this._borrower = 0; // the watch over the program that has them
    }

    // Every US layout has some, where nothing turns them into something else.
    isNeededFor(characters) {
        const keyboards = KeyboardManager.getKeyboardManager();
        const isUs = keyboards.currentLayout?.layout === 'us' && keyboards.currentLayout.variant === '';
        const isLocked = Clutter.get_default_backend().get_default_seat().get_keymap().get_caps_lock_state();
        return !isUs || isLocked || this._borrower !== 0
            || characters.some(character => character < 0x20 || character >= 0x7f);
    }

    // Until the program gives them back, or ends.
    lend(characters, program) {
        this._forgetBorrower();
        this._borrower = Gio.bus_watch_name_on_connection(Gio.DBus.session, program,
            Gio.BusNameWatcherFlags.NONE, null, () => this.takeBack());
        this._setSymbols(characters);
    }

    takeBack() {
        if (!this._borrower)
            return;
        this._forgetBorrower();
        const keyboards = KeyboardManager.getKeyboardManager();
        keyboards._currentKeymap = null; // which would count as in force
        keyboards.reapply();
    }

    _forgetBorrower() {
        if (this._borrower)
            Gio.bus_unwatch_name(this._borrower);
        this._borrower = 0;
    }

    // A keyboard's map comes from files alone, those of the user among them. Caps Lock has no part in these keys.
    _setSymbols(characters) {
        const rows = [];
        for (let i = 0; i < Math.min(characters.length, 2 * typingKeys.length); i += 2) {
            const names = characters.slice(i, i + 2).map(character => `U${character.toString(16).padStart(4, '0')}`);
            const kind = names.length === 2 ? 'TWO_LEVEL' : 'ONE_LEVEL';
            rows.push(`    key <${typingKeys[i / 2]}> { type = "${kind}", [ ${names.join(', ')} ] };`);
        }
        const folder = GLib.build_filenamev([GLib.get_user_config_dir(), 'xkb', 'symbols']);
        const path = GLib.build_filenamev([folder, layoutName]);
        GLib.mkdir_with_parents(folder, 0o755);
        GLib.file_set_contents(path, `xkb_symbols "basic" {\n${rows.join('\n')}\n};\n`);
        global.backend.set_keymap(layoutName, '', '');
        global.backend.lock_layout_group(0);
        GLib.unlink(path);
    }
};
