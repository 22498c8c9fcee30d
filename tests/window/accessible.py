"""A private accessibility bus, and access to the program on it, like that of a screen reader."""

import os

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

from desktop import Desktop, MessageBus, eventually
from services import CEILING, retried


class AccessibilityBus(MessageBus):
    """A session bus with assistive technology enabled. This process connects to it, so each process can have only
    one."""

    def __init__(self, environment):
        super().__init__(environment)
        # This process must use the same display and buses as the program, not those of the user who runs the tests.
        os.environ.pop("DISPLAY", None)
        os.environ.update(
            {
                name: environment[name]
                for name in ("DISPLAY", "HOME", "XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS")
                if name in environment
            }
        )
        retried(self.announce_assistive_technology, GLib.Error)
        Atspi.init()
        Atspi.set_timeout(CEILING * 1000, CEILING * 1000)

    @staticmethod
    def announce_assistive_technology():
        connection = Gio.bus_get_sync(Gio.BusType.SESSION)
        connection.set_exit_on_close(False)
        launcher = Gio.DBusProxy.new_sync(
            connection, Gio.DBusProxyFlags.NONE, None, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", None
        )
        launcher.set_default_timeout(CEILING * 1000)
        launcher.call_sync(
            "org.freedesktop.DBus.Properties.Set",
            GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))),
            Gio.DBusCallFlags.NONE,
            -1,
            None,
        )
        # This call starts the accessibility bus itself, or reports why it does not start.
        launcher.call_sync("GetAddress", None, Gio.DBusCallFlags.NONE, -1, None)


class AccessibleDesktop(Desktop):
    """A desktop with assistive technology."""

    def __init__(self):
        super().__init__()
        self.bus = AccessibilityBus(self.environment)

    def close(self):
        self.bus.close()
        super().close()


def wait_until(condition, what):
    """Like `eventually`, but delivers accessibility events while waiting."""

    def look():
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            return condition()
        except GLib.Error:  # The object was removed during the query.
            return None

    return eventually(look, what)


def descendants(accessible):
    """All descendants of an accessible object, parents before children."""
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child is not None:
            yield child
            yield from descendants(child)


def is_showing(accessible):
    return accessible.get_state_set().contains(Atspi.StateType.SHOWING)


def role_name(accessible):
    """The name of the role in AT-SPI 2.46. AT-SPI 2.56 calls a push button a button."""
    name = accessible.get_role_name()
    return "push button" if name == "button" else name


def described(accessible):
    return f"{role_name(accessible)} “{accessible.get_name()}”"


class AccessibleProgram:
    """The program on the accessibility bus."""

    def __init__(self, pid):
        self.application = wait_until(lambda: self.find_application(pid), "the program on the accessibility bus")
        self.application.set_cache_mask(Atspi.Cache.NONE)

    @staticmethod
    def find_application(pid):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        found = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
        return next((each for each in found if each is not None and each.get_process_id() == pid), None)

    def window(self, title):
        def find():
            found = [self.application.get_child_at_index(index) for index in range(self.application.get_child_count())]
            return next((each for each in found if each is not None and each.get_name() == title), None)

        return wait_until(find, f"a window “{title}”")

    def find(self, window, role, name):
        """Waits for the visible control with this role and name in the window with this title."""

        def look():
            return next(
                (
                    each
                    for each in descendants(self.window(window))
                    if is_showing(each) and (role_name(each), each.get_name()) == (role, name)
                ),
                None,
            )

        return wait_until(look, f"{role} “{name}” in “{window}”")

    def status(self, window):
        """The text of the window's status line."""
        return next(
            (each.get_name() for each in descendants(self.window(window)) if role_name(each) == "status bar"), ""
        )

    def act(self, window, role, name, action):
        """Waits for an enabled control and performs one of its actions."""
        control = self.find(window, role, name)
        wait_until(
            lambda: control.get_state_set().contains(Atspi.StateType.ENABLED)
            and not control.get_description().startswith("Not available"),
            f"an enabled “{name}”",
        )
        self.perform(control, action)

    @staticmethod
    def perform(control, action):
        actions = control.get_action_iface()
        names = [actions.get_action_name(index) for index in range(actions.get_n_actions())]
        assert action in names, f"{described(control)} offers {names}"
        actions.do_action(names.index(action))

    def act_in_menu(self, window, menu, item):
        """Opens a menu of the window and presses one of its items."""
        title = wait_until(
            lambda: next(
                (
                    each
                    for each in descendants(self.window(window))
                    if is_showing(each)
                    and role_name(each) in ("menu", "menu bar", "menu item")
                    and each.get_name() == menu
                ),
                None,
            ),
            f"a menu “{menu}”",
        )
        self.perform(title, "Press")
        self.act(window, "menu item", item, "Press")

    def choose_file(self, panel, path, button):
        """Types a file name into an open panel and confirms it."""
        self.find(panel, "text", "File name:").get_editable_text_iface().set_text_contents(str(path))
        self.act(panel, "push button", button, "Press")
