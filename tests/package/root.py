"""A bare Debian root in which a test installs packages and does not touch the machine."""
import ctypes
import fcntl
import glob
import hashlib
import os
import pathlib
import re
import shutil
import socket
import struct
import subprocess
import sys

SUITE = "bookworm"
# What a desktop has before our package comes.
DESKTOP = ("xvfb openbox tint2 dunst dbus dbus-bin dbus-x11 at-spi2-core x11-utils xdotool mousepad pulseaudio pulseaudio-utils "
           "python3-gi gir1.2-atspi-2.0 gir1.2-gtk-3.0 procps").split()
DEVICES = "null zero full random urandom tty".split()


def skip(why):
    print(f"SKIPPED: {why}", flush=True)
    sys.exit(77)


def check():
    """Skips the test where there can be no such root."""
    if os.geteuid() != 0:
        skip("only root can make a bare root and install in it")
    if not shutil.which("mmdebstrap"):
        skip("no bare root without the package mmdebstrap")
    if not sources():
        skip(f"apt knows no sources of {SUITE} here")
    tried = subprocess.run([*NAMESPACE, "unshare", "--net", "mount", "-t", "tmpfs", "none", "/mnt"], capture_output=True,
                           text=True)
    if tried.returncode != 0:
        skip(f"mounting is refused here: {tried.stderr.strip()}")


# Mounts, and whatever runs in the root, end with the test, however it ends.
NAMESPACE = "unshare", "--mount", "--propagation", "private", "--pid", "--fork", "--kill-child"


def sources():
    """Where this machine has its packages from: the files, if they are for the right suite."""
    files = [each for each in ("/etc/apt/sources.list", *sorted(glob.glob("/etc/apt/sources.list.d/*")))
             if each.endswith((".list", ".sources")) and os.path.isfile(each)]
    return [each for each in files if SUITE in pathlib.Path(each).read_text()]


def apt_settings():
    """The machine's own settings of apt's downloads, such as a proxy."""
    files = [each for each in sorted(glob.glob("/etc/apt/apt.conf.d/*")) if "Acquire::" in pathlib.Path(each).read_text()]
    return [f"--aptopt={each}" for each in files if "Invoke" not in pathlib.Path(each).read_text()]


def archive(folder):
    """The root as an archive in that folder; made if there is none for these packages and sources."""
    wanted = " ".join(DESKTOP) + "".join(pathlib.Path(each).read_text() for each in sources())
    file = folder / f"root-{hashlib.sha256(wanted.encode()).hexdigest()[:12]}.tar"
    if not file.exists():
        folder.mkdir(parents=True, exist_ok=True)
        for old in folder.glob("root-*"):
            old.unlink()
        new = file.with_suffix(".new.tar")
        in_memory = 'mount -t tmpfs none "$0" && TMPDIR=$0 exec nice "$@"'
        # With the lists of packages, so that apt need not fetch them each time.
        made = subprocess.run([*NAMESPACE, "sh", "-c", in_memory, "/mnt", "mmdebstrap", "--variant=apt",
                               "--skip=cleanup/apt/lists", "--dpkgopt=force-unsafe-io", f"--include={','.join(DESKTOP)}",
                               *apt_settings(), SUITE, new, *sources()], capture_output=True, text=True)
        if made.returncode != 0:
            skip(f"mmdebstrap made no root: {made.stderr.strip().splitlines()[-1]}")
        new.rename(file)
    return file


class Root:
    """The unpacked root. To be used inside `NAMESPACE`; the packages that are fetched stay in `folder`."""

    def __init__(self, folder, file):
        self.path, packages = folder / "root", folder / "packages"
        for each in (self.path, packages / "partial"):
            each.mkdir(parents=True, exist_ok=True)
        # It lives in memory, so nothing is left of it, and installing is quick.
        mount("-t", "tmpfs", "-o", "mode=755,size=4g", "root", self.path)
        subprocess.run(["tar", "-xf", file, "-C", self.path, "--exclude=./dev/*", "--numeric-owner"], check=True)
        mount("-t", "proc", "proc", self.path / "proc")
        for each in DEVICES:
            (self.path / "dev" / each).touch()
            mount("--bind", f"/dev/{each}", self.path / "dev" / each)
        (self.path / "dev/shm").mkdir()
        (self.path / "dev/shm").chmod(0o1777)
        os.symlink("/proc/self/fd", self.path / "dev/fd")
        mount("--bind", packages, self.path / "var/cache/apt/archives")
        shutil.copy("/etc/resolv.conf", self.path / "etc/resolv.conf")
        (self.path / "usr/sbin/policy-rc.d").write_text("#!/bin/sh\nexit 101\n")  # no services are started
        (self.path / "usr/sbin/policy-rc.d").chmod(0o755)
        (self.path / "etc/dpkg/dpkg.cfg.d/quick").write_text("force-unsafe-io\n")

    def run(self, *command, **options):
        """Runs a command as root and returns what it printed. Raises if it fails."""
        environment = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "DEBIAN_FRONTEND": "noninteractive", "LC_ALL": "C.UTF-8"}
        ended = subprocess.run(["chroot", self.path, *command], env=environment, stdin=subprocess.DEVNULL, text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
        assert ended.returncode == 0, f"{' '.join(map(str, command))}: status {ended.returncode}\n{ended.stdout}"
        return ended.stdout

    def apt(self, *arguments):
        return self.run("nice", "apt", "-o", "Binary::apt::APT::Keep-Downloaded-Packages=true", "-q", "-y", *arguments)

    def bring(self, package, name):
        """Puts a package file where the root can install it; returns its name there."""
        shutil.copy(package, self.path / "srv" / name)
        return f"/srv/{name}"

    def add_user(self, name):
        self.run("useradd", "--create-home", "--shell", "/bin/bash", name)
        runtime = self.path / "run/user/1000"
        runtime.mkdir(parents=True)
        runtime.chmod(0o700)
        os.chown(runtime, 1000, 1000)

    def files(self):
        """All files but those of the kernel and of the test."""
        found = set()
        for folder, folders, names in os.walk(self.path):
            here = os.path.relpath(folder, self.path)
            if here == ".":
                folders[:] = [each for each in folders if each not in ("dev", "proc", "sys", "srv", "tmp", "run")]
            found.update(os.path.normpath(os.path.join("/", here, each)) for each in (*names, *folders))
        return found

    def owned(self):
        """The files of the installed packages. Those in /lib are in /usr/lib, where the link leads, and so on."""
        lists = (self.path / "var/lib/dpkg/info").glob("*.list")
        return {re.sub("^/(lib|lib64|bin|sbin)/", r"/usr/\1/", line) for each in lists for line in each.read_text().splitlines()}


def mount(*arguments):
    subprocess.run(["mount", *arguments], check=True)


def go_offline():
    """From here on this process and its children have a network of their own, with nothing but the loopback address."""
    clone_newnet, interface_flags, up = 0x40000000, 0x8914, 1
    if ctypes.CDLL(None, use_errno=True).unshare(clone_newnet) != 0:
        raise OSError(ctypes.get_errno(), "unshare")
    with socket.socket() as any_socket:
        fcntl.ioctl(any_socket, interface_flags, struct.pack("16sh", b"lo", up))
