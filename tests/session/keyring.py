"""A desktop key store on its own session bus."""

import subprocess

from editor_session import wait_until


class Keyring:
    """A session bus with an unlocked gnome-keyring."""

    def __init__(self, session, support_programs):
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                                    env=session.environment, stdout=subprocess.PIPE, text=True)
        session.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()
        self.daemon = subprocess.Popen(["gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock"],
                                       env=session.environment, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
        self.daemon.stdin.write(b"password")
        self.daemon.stdin.close()
        self.session = session
        self.client = support_programs / "support_key_store"
        wait_until("the key store", lambda: "state=kept" in self.ask("read", "probe"))

    def ask(self, *arguments):
        return subprocess.run([str(self.client), *arguments], env=self.session.environment, capture_output=True,
                              text=True, check=True).stdout

    def close(self):
        for process in (self.daemon, self.bus):
            process.kill()
            process.wait()
