// What GNOME tells no program but its own extensions: windows, where the pointer is, a hotkey, and the clipboard
// without a window. Plum asks for it on the session bus.

'use strict';

const {Clutter, Gio, GLib, Meta, Shell} = imports.gi;
const {getCurrentExtension} = imports.misc.extensionUtils;
const {LentKeys} = getCurrentExtension().imports.lentKeys;
const Main = imports.ui.main;

const busName = '@PLUM_DOMAIN@.Desktop';
const objectPath = '/@PLUM_DOMAIN_PATH@/Desktop';

// Bits of a window's flags.
const Flag = {
    FOCUSED: 1,
    MINIMISED: 2,
    HIDDEN: 4,
    HERE: 8, // on the workspace that the user sees
    MAXIMISED: 16, // in one direction at least
};

// Numbers below are left out, so that small ones name no window.
const firstNumber = 1000;

const ownersTime = 1000; // milliseconds to send the clipboard's text

const tremble = 1 / 64; // pixels
const mostLooks = 500;
const pictureTime = 2000; // milliseconds

const textTypes = ['text/plain;charset=utf-8', 'UTF8_STRING', 'text/plain', 'TEXT', 'STRING'];

const drivenTypes = [
    Meta.WindowType.NORMAL, Meta.WindowType.DIALOG, Meta.WindowType.MODAL_DIALOG, Meta.WindowType.UTILITY,
];

function numberOf(window) {
    return firstNumber + window.get_stable_sequence();
}

class Desktop {
    constructor() {
        this._hidden = new Map(); // window: id of the signal that it is minimised no more
        this._grabs = new Map(); // name on the bus: {action, watch}
        this._lent = new LentKeys();
        this._hand = null; // a mouse of ours
        this._signals = [];
        this._windowSignals = new Map(); // window: ids
        const [, description] = getCurrentExtension().dir.get_child('interface.xml').load_contents(null);
        this._exported = Gio.DBusExportedObject.wrapJSObject(new TextDecoder().decode(description), this);
        this._exported.export(Gio.DBus.session, objectPath);
        this._name = Gio.bus_own_name_on_connection(
            Gio.DBus.session, busName, Gio.BusNameOwnerFlags.NONE, null, null);

        // A window that was created is placed when it is shown, and would be moved away again before that.
        this._listen(global.window_manager, 'map', (_manager, actor) => {
            this._follow(actor.meta_window);
            this._tellOfWindows();
        });
        this._listen(global.display, 'accelerator-activated', (_display, action, _device, time) =>
            this._tellOfKeys(action, time));
        this._listen(this._selection(), 'owner-changed', (_selection, kind) => {
            if (kind === Meta.SelectionType.SELECTION_CLIPBOARD)
                this._exported.emit_signal('ClipboardChanged', null);
        });
        for (const actor of global.get_window_actors())
            this._follow(actor.meta_window);
    }

    destroy() {
        for (const name of [...this._grabs.keys()])
            this._release(name);
        this._lent.takeBack();
        this._hand = null;
        for (const window of [...this._hidden.keys()])
            this._forgetHidden(window);
        for (const [window, ids] of this._windowSignals)
            ids.forEach(id => window.disconnect(id));
        for (const [object, id] of this._signals)
            object.disconnect(id);
        Gio.bus_unown_name(this._name);
        this._exported.unexport();
    }

    _listen(object, signal, call) {
        this._signals.push([object, object.connect(signal, call)]);
    }

    // Windows.

    _follow(window) {
        if (this._windowSignals.has(window))
            return;
        const ids = [
            window.connect('notify::title', () => this._tellOfWindows()),
            window.connect('unmanaged', () => {
                this._windowSignals.delete(window);
                this._hidden.delete(window);
                this._tellOfWindows();
            }),
        ];
        this._windowSignals.set(window, ids);
    }

    _tellOfWindows() {
        this._exported.emit_signal('WindowsChanged', null);
    }

    _all() {
        const windows = [...this._windowSignals.keys()].filter(
            window => drivenTypes.includes(window.get_window_type()));
        return global.display.sort_windows_by_stacking(windows).reverse();
    }

    // `change` returns the frame to come where that is not the present one.
    _change(number, change) {
        const window = this._all().find(each => numberOf(each) === number);
        if (!window)
            return [0, 0, 0, 0];
        const {x, y, width, height} = change(window) ?? window.get_frame_rect();
        return [x, y, width, height];
    }

    // A window that has the focus gets no keys while the overview or a dialog of the shell's has them.
    _flags(window) {
        const isHere = window.located_on_workspace(global.workspace_manager.get_active_workspace());
        return (window.has_focus() && Main.modalCount === 0 ? Flag.FOCUSED : 0)
            | (window.minimized ? Flag.MINIMISED : 0)
            | (this._hidden.has(window) ? Flag.HIDDEN : 0)
            | (isHere ? Flag.HERE : 0)
            | (window.get_maximized() !== 0 ? Flag.MAXIMISED : 0);
    }

    Windows() {
        return this._all().map(window => {
            const frame = window.get_frame_rect();
            return [numberOf(window), window.get_pid(), window.get_title() ?? '',
                frame.x, frame.y, frame.width, frame.height, this._flags(window)];
        });
    }

    Activate(number) {
        return this._change(number, window => {
            if (!this._hidden.has(window))
                Main.activateWindow(window);
        });
    }

    // There is no other place for a window that nobody shall see. It counts as hidden until something brings it
    // back, the user among them.
    Hide(number) {
        return this._change(number, window => {
            if (this._hidden.has(window))
                return;
            window.minimize();
            this._hidden.set(window, window.connect('notify::minimized', () => this._forgetHidden(window)));
        });
    }

    _forgetHidden(window) {
        window.disconnect(this._hidden.get(window));
        this._hidden.delete(window);
    }

    Show(number) {
        return this._change(number, window => {
            if (this._hidden.has(window) || !window.minimized)
                Main.activateWindow(window);
        });
    }

    Minimise(number) {
        return this._change(number, window => {
            if (this._hidden.has(window))
                this._forgetHidden(window);
            else
                window.minimize();
        });
    }

    Maximise(number) {
        return this._change(number, window => {
            window.unminimize();
            window.maximize(Meta.MaximizeFlags.BOTH);
            return window.get_work_area_current_monitor();
        });
    }

    Close(number) {
        return this._change(number, window => {
            window.delete(global.get_current_time());
        });
    }

    KeepAbove(number) {
        return this._change(number, window => {
            window.make_above();
        });
    }

    BringHere(number) {
        return this._change(number, window => {
            window.change_workspace(global.workspace_manager.get_active_workspace());
        });
    }

    Move(number, x, y) {
        return this._change(number, window => {
            const {width, height} = window.get_frame_rect();
            const wasMinimised = window.minimized;
            const wasMaximised = window.get_maximized() !== 0;
            // Its program draws it in an earlier size first, which undoes what is asked for before that.
            if (wasMaximised)
                window.unmaximize(Meta.MaximizeFlags.BOTH);
            if (!wasMaximised)
                window.move_frame(true, x, y);
            else if (wasMinimised)
                window.move_resize_frame(true, x, y, width, height);
            if (!wasMinimised)
                Main.activateWindow(window);
            return wasMaximised ? {x, y, width, height} : null;
        });
    }

    Place(number, x, y, width, height) {
        return this._change(number, window => {
            window.move_resize_frame(true, x, y, width, height);
            return {x, y, width, height};
        });
    }

    SettleAsync(_arguments, invocation) {
        this._settle(() => invocation.return_value(null));
    }

    // Events of programs go through a thread of the compositor's own, and then wait for the next picture. A motion that
    // nobody notices, which is known to be behind them, shows when they have left the thread.
    _settle(then) {
        const seat = Clutter.get_default_backend().get_default_seat();
        const tracker = Meta.CursorTracker.get_for_display(global.display);
        const place = () => tracker.get_pointer()[0];
        const from = place();
        const aside = from.x >= 1 ? from.x - tremble : from.x + tremble;
        this._hand ??= seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
        this._hand.notify_absolute_motion(GLib.get_monotonic_time(), aside, from.y);
        let looks = 0;
        GLib.timeout_add(GLib.PRIORITY_DEFAULT, 1, () => {
            if (place().x === from.x && ++looks < mostLooks)
                return GLib.SOURCE_CONTINUE;
            this._hand.notify_absolute_motion(GLib.get_monotonic_time(), from.x, from.y);
            this._afterPicture(then);
            return GLib.SOURCE_REMOVE;
        });
    }

    // A screen that is off shows no more pictures.
    _afterPicture(then) {
        let limit = 0;
        const id = global.stage.connect('after-update', () => {
            global.stage.disconnect(id);
            GLib.source_remove(limit);
            then();
        });
        limit = GLib.timeout_add(GLib.PRIORITY_DEFAULT, pictureTime, () => {
            global.stage.disconnect(id);
            then();
            return GLib.SOURCE_REMOVE;
        });
        global.stage.schedule_update();
    }

    LendKeysAsync([characters], invocation) {
        const answer = isLent => invocation.return_value(new GLib.Variant('(b)', [isLent]));
        if (!this._lent.isNeededFor(characters)) {
            answer(false);
            return;
        }
        this._settle(() => {
            this._lent.lend(characters, invocation.get_sender());
            answer(true);
        });
    }

    GiveKeysBackAsync(_arguments, invocation) {
        this._settle(() => {
            this._lent.takeBack();
            invocation.return_value(null);
        });
    }

    Pointer() {
        const [x, y] = global.get_pointer();
        return [x, y];
    }

    // Keys.

    GrabKeysAsync([accelerator], invocation) {
        const name = invocation.get_sender();
        this._release(name);
        const action = global.display.grab_accelerator(accelerator, Meta.KeyBindingFlags.NONE);
        const isGranted = action !== Meta.KeyBindingAction.NONE;
        if (isGranted) {
            Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), Shell.ActionMode.ALL);
            const watch = Gio.bus_watch_name_on_connection(Gio.DBus.session, name,
                Gio.BusNameWatcherFlags.NONE, null, () => this._release(name));
            this._grabs.set(name, {action, watch});
        }
        invocation.return_value(new GLib.Variant('(b)', [isGranted]));
    }

    ReleaseKeysAsync(_arguments, invocation) {
        this._release(invocation.get_sender());
        invocation.return_value(null);
    }

    _release(name) {
        const grab = this._grabs.get(name);
        if (!grab)
            return;
        this._grabs.delete(name);
        Gio.bus_unwatch_name(grab.watch);
        global.display.ungrab_accelerator(grab.action);
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(grab.action), Shell.ActionMode.NONE);
    }

    _tellOfKeys(action, time) {
        for (const [name, grab] of this._grabs) {
            if (grab.action === action)
                Gio.DBus.session.emit_signal(name, objectPath, busName, 'KeysPressed', new GLib.Variant('(u)', [time]));
        }
    }

    // The clipboard. What is put on it is kept here, so it outlives the program that it came from.

    _selection() {
        return global.display.get_selection();
    }

    ClipboardTextAsync(_arguments, invocation) {
        const answer = text => invocation.return_value(new GLib.Variant('(ay)', [text]));
        const offered = this._selection().get_mimetypes(Meta.SelectionType.SELECTION_CLIPBOARD);
        const type = textTypes.find(each => offered.includes(each));
        if (!type) {
            answer([]);
            return;
        }
        const stream = Gio.MemoryOutputStream.new_resizable();
        const cancellable = new Gio.Cancellable();
        const limit = GLib.timeout_add(GLib.PRIORITY_DEFAULT, ownersTime, () => {
            cancellable.cancel();
            return GLib.SOURCE_REMOVE;
        });
        this._selection().transfer_async(Meta.SelectionType.SELECTION_CLIPBOARD, type, -1, stream, cancellable,
            (selection, result) => {
                if (!cancellable.is_cancelled())
                    GLib.source_remove(limit);
                try {
                    selection.transfer_finish(result);
                    stream.close(null);
                    answer(stream.steal_as_bytes().toArray());
                } catch {
                    answer([]);
                }
            });
    }

    SetClipboardText(text) {
        const source = Meta.SelectionSourceMemory.new(textTypes[0], new GLib.Bytes(text));
        this._selection().set_owner(Meta.SelectionType.SELECTION_CLIPBOARD, source);
    }
}

let desktop = null;

function init() {
}

function enable() {
    desktop = new Desktop();
}

function disable() {
    desktop.destroy();
    desktop = null;
}
