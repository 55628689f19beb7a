"""A PostgreSQL server of its own, in a temporary folder, on a Unix socket; run by an account without rights."""

import os
import shutil
import signal
import socket
import subprocess
import tempfile
import threading
import time
from pathlib import Path

PROGRAMS = Path("/usr/lib/postgresql/15/bin")
CONNECTION_STRING = "postgresql://{user}@/{database}?host={folder}"


def is_there():
    return (PROGRAMS / "initdb").exists() and (os.geteuid() != 0 or shutil.which("setpriv") is not None)


class Server:
    def __init__(self):
        self.home = tempfile.TemporaryDirectory(prefix="orv-server-", dir="/tmp")
        self.folder = Path(self.home.name)
        self.process = None
        if os.geteuid() == 0:  # the server refuses to be run by root
            shutil.chown(self.folder, "nobody", "nogroup")
        self.run("initdb", "-D", self.folder / "data", "-U", "owner", "-A", "trust", "-E", "UTF8", "--locale", "C",
                 "--no-sync")

    @staticmethod
    def command(program, *arguments):
        drop = ["setpriv", "--reuid", "nobody", "--regid", "nogroup", "--clear-groups"] if os.geteuid() == 0 else []
        return [*drop, str(PROGRAMS / program), *map(str, arguments)]

    def run(self, program, *arguments, data=b""):
        done = subprocess.run(self.command(program, *arguments), input=data, capture_output=True, cwd="/", timeout=120,
                              check=False)
        if done.returncode != 0:
            raise RuntimeError(f"{program}: {done.stderr.decode()}")
        return done.stdout.decode()

    def start(self):
        for _ in range(600):
            # One that finds a process of its killed predecessor still ending refuses to start.
            if self.process is None or self.process.poll() is not None:
                with open(self.folder / "log", "ab") as log:
                    self.process = subprocess.Popen(  # pylint: disable=consider-using-with
                        self.command("postgres", "-D", self.folder / "data", "-k", self.folder, "-c", "listen_addresses="),
                        stdout=log, stderr=log, cwd="/")
            if subprocess.run(self.command("pg_isready", "-q", "-h", self.folder), cwd="/", check=False).returncode == 0:
                return
            time.sleep(0.1)
        raise RuntimeError((self.folder / "log").read_text(encoding="utf-8"))

    def kill(self):
        """As a power failure does, all of its processes at once."""
        self.process.send_signal(signal.SIGSTOP)  # it makes no more of them
        children = subprocess.run(["ps", "-o", "pid=", "--ppid", str(self.process.pid)], capture_output=True, check=False)
        for process in [*map(int, children.stdout.split()), self.process.pid]:
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass
        self.process.wait()

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.send_signal(signal.SIGINT)
            self.process.wait(60)
        self.home.cleanup()

    def address(self, database, user="owner"):
        return CONNECTION_STRING.format(user=user, database=database, folder=self.folder)

    def sql(self, database, text):
        """The rows of the last statement."""
        out = self.run("psql", "-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-h", self.folder, "-U", "owner",
                       "-d", database, data=text.encode())
        return [tuple(line.split("|")) for line in out.splitlines()]


class LossyWay:
    """Passes everything between a program and the server on, but drops the connection behind the first commit, of which
    the answer never comes back."""

    def __init__(self, server):
        self.target = str(server.folder / ".s.PGSQL.5432")
        self.home = tempfile.TemporaryDirectory(prefix="orv-way-", dir="/tmp")
        self.state = "whole"
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(self.home.name + "/.s.PGSQL.5432")
        self.listener.listen()
        self.ends = []
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                near = self.listener.accept()[0]
            except OSError:
                return
            far = socket.socket(socket.AF_UNIX)
            self.ends += [near, far]
            far.connect(self.target)
            threading.Thread(target=self.answers, args=(far, near), daemon=True).start()
            threading.Thread(target=self.requests, args=(near, far), daemon=True).start()

    def requests(self, near, far):
        while data := self.receive(near):
            if b"notify orvact_events; commit" in data and self.state == "whole":
                self.state = "losing"
            far.sendall(data)
        far.shutdown(socket.SHUT_RDWR)

    def answers(self, far, near):
        while data := self.receive(far):
            if self.state == "losing":  # the server has done it, as it answers
                self.state = "lost"
                break
            near.sendall(data)
        try:
            near.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass

    @staticmethod
    def receive(end):
        try:
            return end.recv(65536)
        except OSError:
            return b""

    def close(self):
        for end in [self.listener, *self.ends]:
            end.close()
        self.home.cleanup()
