"""A throw-away desktop: X server, window manager, session bus and home folder, all gone when it closes."""
import ctypes
import os
import pathlib
import select
import shutil
import signal
import subprocess
import tempfile
import time

DEADLINE = 20  # seconds that anything awaited may take, however busy the machine

# The limits are those of a usual session bus. Only the services listed in the private folder can be
# activated: an installed notification server would start by itself otherwise.
BUS_CONFIG = '''<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={root}/run/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{root}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <limit name="max_message_size">1000000000</limit>
  <limit name="max_incoming_bytes">1000000000</limit>
  <limit name="max_outgoing_bytes">1000000000</limit>
  <limit name="max_replies_per_connection">50000</limit>
  <limit name="reply_timeout">300000</limit>
</busconfig>
'''

NOTIFIERS = {
    'dunst': ['dunst', '-conf', '/dev/null'],
    'xfce': ['xfce4/notifyd/xfce4-notifyd'],
    'gnome': ['notification-daemon/notification-daemon'],
}
LIBRARY_FOLDERS = ['/usr/lib', f'/usr/lib/{os.uname().machine}-linux-gnu', '/usr/libexec', '/usr/lib64']


def wait_until(condition, what='', deadline=DEADLINE):
    """Polls until condition() holds and returns its value."""
    end = time.monotonic() + deadline
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(f'still waiting after {deadline} s: {what or condition}')
        time.sleep(0.01)


def die_with_parent():
    """Runs in a child: a test that is killed leaves nothing behind."""
    PR_SET_PDEATHSIG = 1
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


class Desk:
    """The environment for programs is in env; display and bus can be left out."""

    def __init__(self, display=True, bus=True):
        self.children = []
        self.root = pathlib.Path(tempfile.mkdtemp(prefix='testdesk.'))
        try:
            self._make_folders()
            if display:
                self._start_display()
            if bus:
                self._start_bus()
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        for child in reversed(self.children):
            self.stop(child)
        shutil.rmtree(self.root, ignore_errors=True)

    def spawn(self, command, name, env=None, **options):
        """Starts a program that ends with the desktop; its output goes to the file NAME.log."""
        with open(self.root / f'{name}.log', 'ab') as log:
            options = {'stdin': subprocess.DEVNULL, 'stdout': log, 'stderr': log} | options
            child = subprocess.Popen(command, env=self.env if env is None else env,
                                     preexec_fn=die_with_parent, **options)
        self.children.append(child)
        return child

    def stop(self, child, how=signal.SIGTERM):
        if child.poll() is None:
            child.send_signal(how)
            try:
                child.wait(5)
            except subprocess.TimeoutExpired:
                child.kill()
                child.wait()
        if child in self.children:
            self.children.remove(child)

    def run(self, *command, **options):
        """Runs a command to its end and gives its standard output."""
        options = {'check': True, 'timeout': DEADLINE} | options
        return subprocess.run(command, env=self.env, stdout=subprocess.PIPE, text=True, **options).stdout

    def windows(self, name):
        """Numbers of the windows in sight whose name matches."""
        def search():
            command = ['xdotool', 'search', '--onlyvisible', '--name', name]
            run = subprocess.run(command, env=self.env, capture_output=True, text=True, timeout=DEADLINE)
            return None if 'X Error' in run.stderr else (run.stdout.split(),)  # one went while it looked
        return wait_until(search, 'a list of the windows')[0]

    def window(self, name):
        """Number of the first window in sight whose name matches; empty where there is none."""
        return ''.join(self.windows(name)[:1])

    def window_tree(self):
        """All windows of the display, as xwininfo tells them: it fails where one goes while it looks."""
        tree = lambda: subprocess.run(['xwininfo', '-root', '-tree'], env=self.env, capture_output=True, text=True)
        return wait_until(lambda: (seen := tree()).returncode == 0 and seen.stdout, 'a list of all windows')

    def start_notifier(self, kind):
        """One of the real notification servers."""
        program, *arguments = NOTIFIERS[kind]
        places = [f'{folder}/{program}' for folder in LIBRARY_FOLDERS] if '/' in program else [shutil.which(program)]
        path = next((place for place in places if place and os.access(place, os.X_OK)), None)
        if path is None:
            raise FileNotFoundError(f'notification server {kind} is not installed')
        child = self.spawn([path, *arguments], kind)
        self.wait_for_name('org.freedesktop.Notifications')
        return child

    def has_name(self, name):
        call = ['gdbus', 'call', '--session', '--dest', 'org.freedesktop.DBus', '--object-path', '/',
                '--method', 'org.freedesktop.DBus.NameHasOwner', name]
        return 'true' in self.run(*call)

    def wait_for_name(self, name):
        wait_until(lambda: self.has_name(name), f'{name} on the bus')

    def _make_folders(self):
        home, run = self.root / 'home', self.root / 'run'
        # Made from nothing, so that no setting of the machine reaches the tests.
        self.env = {
            'PATH': os.environ.get('PATH', '/usr/bin:/bin'), 'LC_ALL': 'C.UTF-8',
            'HOME': str(home), 'TMPDIR': str(self.root), 'XDG_RUNTIME_DIR': str(run),
            'XDG_CONFIG_HOME': f'{home}/.config', 'XDG_DATA_HOME': f'{home}/.local/share',
            'XDG_CACHE_HOME': f'{home}/.cache', 'XDG_STATE_HOME': f'{home}/.local/state',
            'XDG_CURRENT_DESKTOP': 'Test', 'GSETTINGS_BACKEND': 'memory', 'NO_AT_BRIDGE': '1',
            'QT_QUICK_BACKEND': 'software',
        }
        self.env |= {name: value for name, value in os.environ.items() if name.endswith('SAN_OPTIONS')}
        self.config = pathlib.Path(self.env['XDG_CONFIG_HOME'])
        for name in ('XDG_CONFIG_HOME', 'XDG_DATA_HOME', 'XDG_CACHE_HOME', 'XDG_STATE_HOME'):
            os.makedirs(self.env[name])
        run.mkdir(mode=0o700)
        (self.root / 'services').mkdir()

    def _spawn_announcing(self, command, name, option):
        """Starts a server that writes where it is reached to the descriptor named by the option."""
        reader, writer = os.pipe()
        self.spawn([*command, *option(writer)], name, pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as answer:
            ready, _, _ = select.select([answer], [], [], DEADLINE)
            text = answer.readline().strip() if ready else ''
        if not text:
            raise RuntimeError(f'{name} did not start: {(self.root / f"{name}.log").read_text()}')
        return text

    def _start_display(self):
        number = self._spawn_announcing(['Xvfb', '-screen', '0', '1280x800x24', '-nolisten', 'tcp', '-noreset'],
                                        'xvfb', lambda fd: ['-displayfd', str(fd)])
        self.env |= {'DISPLAY': f':{number}', 'XDG_SESSION_TYPE': 'x11'}
        self.spawn(['openbox', '--sm-disable'], 'openbox')
        ready = lambda: 'window id' in self.run('xprop', '-root', '_NET_SUPPORTING_WM_CHECK', check=False)
        wait_until(ready, 'the window manager')

    def _start_bus(self):
        config = self.root / 'bus.conf'
        config.write_text(BUS_CONFIG.format(root=self.root))
        self.bus_address = self._spawn_announcing(['dbus-daemon', f'--config-file={config}', '--nofork'],
                                                  'bus', lambda fd: [f'--print-address={fd}'])
        # The machine's own system services stay out too.
        self.env |= {'DBUS_SESSION_BUS_ADDRESS': self.bus_address, 'DBUS_SYSTEM_BUS_ADDRESS': self.bus_address}
