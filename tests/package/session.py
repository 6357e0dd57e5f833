"""The session of an ordinary user in a bare root: a virtual desktop on which a test clicks, presses keys and plays sound."""
import pathlib
import shutil
import subprocess
import time

CONTROLS = pathlib.Path(__file__).parents[1] / "desktop/controls.py"
PICTURE = """import gi, sys; gi.require_version("Gdk", "3.0"); from gi.repository import Gdk
screen = Gdk.get_default_root_window()
Gdk.pixbuf_get_from_window(screen, 0, 0, screen.get_width(), screen.get_height()).savev(sys.argv[1], "png", [], [])"""
PATIENCE = 60  # seconds; long for a busy machine
ICON = 48

PANEL = f"""panel_items = LS
panel_size = 100% {ICON + 8}
panel_position = bottom center horizontal
panel_layer = top
launcher_padding = 4 4 4
launcher_icon_size = {ICON}
launcher_item_app = /usr/share/applications/tavelo.desktop
systray_padding = 4 4 4
"""


def await_(what, condition):
    """Waits until the condition holds, and returns what it gave."""
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError(f"waited {PATIENCE} s for {what}")


class Session:
    def __init__(self, root, user, pictures, **environment):
        self.root, self.user, self.pictures, self.home = root, user, pictures, root.path / "home" / user
        self.environment = {"HOME": f"/home/{user}", "USER": user, "LOGNAME": user, "SHELL": "/bin/bash",
                            "PATH": "/usr/local/bin:/usr/bin:/bin", "LANG": "C.UTF-8", "XDG_RUNTIME_DIR": "/run/user/1000",
                            "XDG_SESSION_TYPE": "x11", "DISPLAY": ":5", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **environment}
        self.logs = root.path / "tmp/logs"
        self.logs.mkdir()
        shutil.copy(CONTROLS, root.path / "srv/controls.py")
        shutil.rmtree(pictures, ignore_errors=True)
        pictures.mkdir(parents=True)
        self.steps = self.heard = 0

    def command(self, *command):
        variables = [f"{name}={value}" for name, value in self.environment.items()]
        return ["chroot", f"--userspec={self.user}:{self.user}", "--groups=", self.root.path, "/usr/bin/env", "-i",
                f"--chdir=/home/{self.user}", *variables, *map(str, command)]

    def launch(self, name, *command):
        """Starts a program; its output goes to a log, and it ends with the test."""
        with open(self.logs / f"{name}.log", "wb") as log:
            return subprocess.Popen(self.command(*command), stdin=subprocess.DEVNULL, stdout=log, stderr=log)

    def try_(self, *command):
        """What the command printed; absent if it failed or took too long."""
        with open(self.logs / "commands.log", "ab") as log:
            try:
                ended = subprocess.run(self.command(*command), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=log,
                                       text=True, timeout=PATIENCE + 20)
            except subprocess.TimeoutExpired:
                return None
        return ended.stdout if ended.returncode == 0 else None

    def run(self, *command):
        printed = self.try_(*command)
        assert printed is not None, f"failed: {' '.join(map(str, command))}"
        return printed

    def start_desktop(self):
        self.launch("xvfb", "Xvfb", ":5", "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset")
        await_("the X server", lambda: self.try_("xprop", "-root"))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/run/user/1000/bus"
        self.launch("bus", "dbus-daemon", "--session", "--nofork", "--address=unix:path=/run/user/1000/bus")
        await_("the session bus", (self.root.path / "run/user/1000/bus").exists)
        self.launch("openbox", "openbox")
        await_("the window manager", lambda: "window id" in (self.try_("xprop", "-root", "_NET_SUPPORTING_WM_CHECK") or ""))
        self.launch("dunst", "dunst")
        self.launch("notifications", "dbus-monitor", "interface='org.freedesktop.Notifications',member='Notify'")
        self.launch("pulseaudio", "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                    "-L", "module-native-protocol-unix", "-L", "module-null-sink sink_name=speaker rate=48000 channels=1",
                    "-L", "module-remap-source master=speaker.monitor source_name=microphone")
        await_("the sound server", lambda: self.try_("pactl", "info"))
        # A null sink that sleeps is seconds late.
        self.launch("silence", "pacat", "--playback", "--raw", "--device=speaker", "--latency-msec=20", "/dev/zero")
        (self.root.path / "srv/tint2rc").write_text(PANEL)
        self.launch("panel", "tint2", "-c", "/srv/tint2rc")
        await_("the panel", lambda: self.try_("xdotool", "search", "--onlyvisible", "--class", "^[Tt]int2$"))

    def picture(self, name):
        self.steps += 1
        file = f"{self.steps:02}-{name}.png"
        self.run("python3", "-c", PICTURE, f"/tmp/{file}")
        shutil.move(self.root.path / "tmp" / file, self.pictures / file)

    def process(self):
        """The program's; empty if it does not run."""
        return (self.try_("pgrep", "-r", "R,S,D", "-o", "-x", "tavelo") or "").strip()

    def file_of_process(self):
        """The program that runs; with a remark if the file is no longer that one."""
        return (self.try_("readlink", f"/proc/{self.process()}/exe") or "").strip()

    def control(self, command, name):
        """What is to be known of a control of the program; absent if it shows none of that name."""
        return self.try_("python3", "/srv/controls.py", command, self.process() or "0", name)

    def find(self, name):
        """Waits for a control; where its middle is on the screen."""
        return await_(f"a control called “{name}”", lambda: self.control("place", name)).split()

    def click(self, name):
        self.click_at(*self.find(name))

    def click_at(self, x, y):
        self.run("xdotool", "mousemove", x, y, "click", 1)

    def tap(self, key):
        """Presses a key as long as people do."""
        self.run("xdotool", "keydown", key, "sleep", "0.2", "keyup", key)

    def play(self, sound):
        self.run("paplay", "--device=speaker", sound)

    def speak(self, key, sound):
        """Holds the key while the sentence is played, and a little longer, as people do."""
        overlay = "xdotool", "search", "--onlyvisible", "--name", "^Tavelo$"
        await_("the overlay to go", lambda: not self.try_(*overlay))
        self.run("xdotool", "keydown", key)
        # It appears when the microphone is open.
        await_("the overlay", lambda: self.try_(*overlay))
        self.play(sound)
        time.sleep(0.5)
        self.run("xdotool", "keyup", key)

    def await_notification(self, title):
        """Waits until it was posted, and returns what was said since the last call."""
        def come():
            said = (self.logs / "notifications.log").read_text()[self.heard:]
            return title in said and said
        said = await_(f"the notification “{title}”", come)
        self.heard += len(said)
        return said

    def explain(self):
        """Shows what may tell why a step failed: the ends of the logs, and a picture."""
        for log in sorted(self.logs.iterdir()):
            lines = log.read_text(errors="replace").splitlines()[-8:]
            print(f"--- {log.name}", *lines, sep="\n")
        try:
            self.picture("failed")
        except AssertionError:
            pass
