"""The real window as a screen reader sees it, over AT-SPI, and hands that type and click."""
import subprocess
import warnings

import gi

from desk import wait_until

warnings.simplefilter('ignore')
gi.require_version('Atspi', '2.0')
from gi.repository import Atspi, GLib  # noqa: E402

SERVICE = '[D-BUS Service]\nName=org.a11y.Bus\nExec=/usr/libexec/at-spi-bus-launcher\n'


def add_accessibility(desk):
    """Call before the first use of the desktop's accessibility bus."""
    (desk.root / 'services/org.a11y.Bus.service').write_text(SERVICE)
    desk.env['QT_LINUX_ACCESSIBILITY_ALWAYS_ON'] = '1'


def children(node):
    nodes = (node.get_child_at_index(index) for index in range(node.get_child_count()))
    return [child for child in nodes if child is not None]


def role_of(node):
    """Newer libraries have shorter names for some."""
    role = node.get_role_name()
    return {'button': 'push button'}.get(role, role)


class Application:
    """The accessible tree of one process. Nodes come and go while lists recycle their rows."""

    def __init__(self, desk, pid):
        self.desk, self.pid, self.listeners = desk, pid, []
        self.root = self.wait(lambda: next((node for node in children(Atspi.get_desktop(0))
                                            if node.get_process_id() == pid and node.get_child_count()), None),
                              'the program on the accessibility bus')
        self.root.set_cache_mask(Atspi.Cache.NONE)  # without a main loop of ours a cache goes stale

    @staticmethod
    def wait(condition, what):
        def tolerant():
            try:
                return condition()
            except GLib.GError:
                return None  # the node has gone while we looked at it
        return wait_until(tolerant, what)

    def walk(self, node=None):
        for child in children(node or self.root):
            yield child
            yield from self.walk(child)

    def seek(self, role, name=None):
        return next((node for node in self.walk()
                     if role_of(node) == role and (name is None or node.get_name() == name)
                     and node.get_state_set().contains(Atspi.StateType.SHOWING)), None)

    def find(self, role, name=None):
        return self.wait(lambda: self.seek(role, name), f'{role} "{name}" among {self.names}')

    def find_starting(self, role, start):
        """Rows read out all that they show."""
        def starting():
            return next((node for node in self.walk() if role_of(node) == role and node.get_name().startswith(start)
                         and node.get_state_set().contains(Atspi.StateType.SHOWING)), None)
        return self.wait(starting, f'{role} "{start}…"')

    def has(self, role, name):
        return self.seek(role, name) is not None

    @property
    def names(self):
        return [f'{role_of(node)}|{node.get_name()}' for node in self.walk()]

    def texts(self):
        """What is to be read on the screen."""
        return [node.get_name() for node in self.walk()
                if node.get_name() and node.get_state_set().contains(Atspi.StateType.SHOWING)]

    def wait_for_text(self, text):
        self.wait(lambda: any(text in shown for shown in self.texts()), f'"{text}" on the screen')

    def press(self, role, name):
        """As a screen reader presses it."""
        node = self.find(role, name)
        actions = [node.get_action_name(index) for index in range(node.get_n_actions())]
        node.do_action(actions.index('Press'))

    def click(self, node):
        extents = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        x, y = extents.x + extents.width // 2, extents.y + extents.height // 2
        self.desk.run('xdotool', 'mousemove', str(x), str(y), 'click', '1')

    def focused(self):
        """Role and name of what has the keyboard."""
        node = next((node for node in self.walk() if node.get_state_set().contains(Atspi.StateType.FOCUSED)
                     and role_of(node) not in ('frame', 'window', 'application')), None)
        return (role_of(node), node.get_name()) if node else None

    def has_focus(self, role):
        """Some of the toolkit's own lists say that an item of theirs has it as well."""
        return any(role_of(node) == role and node.get_state_set().contains(Atspi.StateType.FOCUSED) for node in self.walk())

    def contents(self, node):
        return Atspi.Text.get_text(node, 0, -1)

    def listen(self, event):
        """The texts that events of this kind bring from now on; gives how to take those so far."""
        heard = []
        listener = Atspi.EventListener.new(lambda told: heard.append(told.any_data))
        listener.register(event)

        def take():
            while GLib.MainContext.default().iteration(False):
                pass
            return heard
        self.listeners.append(listener)
        return take

    def is_checked(self, node):
        return node.get_state_set().contains(Atspi.StateType.CHECKED)

    def type(self, text):
        subprocess.run(['xdotool', 'type', '--delay', '20', text], env=self.desk.env, check=True)

    def key(self, *keys):
        self.desk.run('xdotool', 'key', *keys)
