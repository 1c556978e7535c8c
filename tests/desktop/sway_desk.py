"""A throw-away Wayland desktop: headless sway, session bus and home folder, all gone when it closes."""
import json
import os
import subprocess

from desk import DEADLINE, Desk, wait_until

NOBODY = 65534
CONFIG = '''output HEADLESS-1 resolution 1280x800 position 0 0
default_border none
focus_follows_mouse no
seat * fallback true
xwayland {xwayland}
exec sh -c 'echo "$WAYLAND_DISPLAY $SWAYSOCK $DISPLAY" >{told}.new && mv {told}.new {told}'
'''

LET_ALL_IN = '''
from Xlib import X, display
server = display.Display()
server.set_access_control(X.DisableAccess)
server.sync()
'''


class SwayDesk(Desk):
    """Programs are started with env, as on any desk. With xwayland they also find an X server."""

    def __init__(self, bus=True, xwayland=False):
        super().__init__(display=False, bus=bus)
        try:
            self._start_sway(xwayland)
        except BaseException:
            self.close()
            raise

    def sway(self, *command):
        """What swaymsg answers, read as JSON."""
        return json.loads(self.run('swaymsg', '--raw', *command, timeout=DEADLINE))

    def focused(self):
        """The window that has the keyboard, as sway describes it; nothing where none has it."""
        waiting = [self.sway('-t', 'get_tree')]
        while waiting:
            node = waiting.pop()
            if node['focused'] and node.get('pid'):
                return node
            waiting += node['nodes'] + node['floating_nodes']
        return None

    def start_focused(self, command, name):
        """Starts a program with a window, and gives its process once that window has the keyboard."""
        child = self.spawn(command, name)
        wait_until(lambda: (self.focused() or {}).get('pid') == child.pid, f'the window of {name} in focus')
        return child

    def _start_sway(self, xwayland):
        # sway refuses to run as root: then it gets a user and a runtime folder of its own, and its socket a
        # second name in the folder of the programs.
        folder, told = self.root / 'sway', self.root / 'sway/told'
        folder.mkdir(mode=0o700)
        (folder / 'config').write_text(CONFIG.format(told=told, xwayland='enable' if xwayland else 'disable'))
        env = self.env | {
            'XDG_RUNTIME_DIR': str(folder), 'HOME': str(folder), 'WLR_BACKENDS': 'headless', 'WLR_RENDERER': 'pixman',
            'WLR_LIBINPUT_NO_DEVICES': '1', 'WLR_HEADLESS_OUTPUTS': '1',
        }
        options = {}
        if os.geteuid() == 0:
            os.chmod(self.root, 0o711)
            for path in (folder, folder / 'config'):
                os.chown(path, NOBODY, NOBODY)
            options = {'user': NOBODY, 'group': NOBODY, 'extra_groups': []}
        child = self.spawn(['sway', '--unsupported-gpu', '-c', str(folder / 'config')], 'sway', env=env, **options)
        wait_until(lambda: told.exists() or child.poll() is not None, 'sway')
        if child.poll() is not None:
            raise RuntimeError(f'sway did not start: {(self.root / "sway.log").read_text()}')
        display, control, *x11 = told.read_text().split()
        os.symlink(folder / display, self.root / 'run' / display)
        self.env |= {'WAYLAND_DISPLAY': display, 'SWAYSOCK': control, 'XDG_SESSION_TYPE': 'wayland',
                     'XDG_CURRENT_DESKTOP': 'sway'} | ({'DISPLAY': x11[0]} if x11 else {})
        self.process = child
        if x11 and options:  # its X server lets its own user in alone
            subprocess.run(['/usr/bin/python3', '-c', LET_ALL_IN], env=self.env, check=True, timeout=DEADLINE, **options)
