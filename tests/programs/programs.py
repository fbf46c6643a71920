"""The two ends of a session: a server on loopback, and the sample host under Wine with a keyboard and a mouse before it;
and tmux, which shows the same programs."""

import os
import re
import signal
import socket
import struct
import subprocess
import time

ROWS, COLUMNS = 25, 80
LINE_DRAWING = str.maketrans('jklmnqtuvwxa0-.', '┘┐┌└┼─├┤┴┬│▒█^v')
# No result depends on it: it is only how long a test waits before it says that something never came.
PATIENCE = 90


def waitFor(condition, what):
    """What `condition` gives once that is true; `what` tells what is missing, and may be a function."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.02)
    raise AssertionError(what() if callable(what) else what)


def run(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, **options).stdout


class Clipboard:
    """Another program's text on the clipboard, as long as nothing else is copied."""

    def __init__(self, text):
        self.process = subprocess.Popen(['xclip', '-quiet', '-selection', 'clipboard'], stdin=subprocess.PIPE,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.process.stdin.write(text.encode())
        self.process.stdin.close()
        waitFor(lambda: clipboard() == text, 'The clipboard cannot be set.')

    def close(self):
        self.process.terminate()
        self.process.wait(PATIENCE)


def clipboard():
    # Fails while the clipboard goes from one program to the other.
    taken = subprocess.run(['xclip', '-o', '-selection', 'clipboard'], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return taken.stdout.decode().replace('\r\n', '\n').rstrip('\0') if taken.returncode == 0 else None


def trimmed(text):
    """The rows of a screen, without the blanks behind them."""
    rows = [row.rstrip() for row in text.split('\n')]
    return (rows + [''] * ROWS)[:ROWS]


class SampleHost:
    """The sample host in a session with `server`, with its terminal created through its registration."""

    def __init__(self, build, folder, server, *options):
        self.screen = folder / 'screen.txt'
        self.screen.unlink(missing_ok=True)
        self.process = subprocess.Popen(
            ['wine', build / 'bin/samplehost.exe', '--registered', '--connect', f'127.0.0.1:{server.port}',
             '--size', f'{COLUMNS}x{ROWS}', '--ini', f'Z:{folder}/host.ini',
             '--snapshot', f'Z:{self.screen}', '--after', '0', '--every', '30', *options],
            stderr=subprocess.PIPE, stdin=subprocess.DEVNULL)
        waitFor(self.screen.exists, 'The sample host shows no screen.')

    def rows(self):
        return trimmed(self.screen.read_text('utf-8'))

    def isCalled(self, part):
        def names():
            windows = run('xdotool', 'search', '--name', '.').split()
            return [run('xdotool', 'getwindowname', window).decode(errors='replace').strip() for window in windows]
        waitFor(lambda: any(part in name for name in names()), lambda: f'"{part}" is in no title: {names()}')

    def shows(self, *texts):
        """Waits until each of the texts is in some row; gives the rows."""
        def there():
            rows = self.rows()
            return rows if all(any(text in row for row in rows) for text in texts) else None
        return waitFor(there, lambda: f'{texts} not on the screen:\n' + '\n'.join(self.rows()))

    def type(self, text):
        run('xdotool', 'type', '--delay', '4', text)

    def press(self, *keys):
        run('xdotool', 'key', '--delay', '4', *keys)

    def pause(self):
        self.process.send_signal(signal.SIGSTOP)

    def resume(self):
        self.process.send_signal(signal.SIGCONT)

    def drag(self, start, end):
        # Motions that follow one another at once are taken as one.
        run('xdotool', 'mousemove', *map(str, start), 'sleep', '0.2', 'mousedown', '1', 'sleep', '0.2', 'mousemove',
            *map(str, end), 'sleep', '0.2', 'mouseup', '1', 'sleep', '0.2')

    def ended(self):
        """The exit status, once the program has ended, and what it has said."""
        said = self.process.communicate(timeout=PATIENCE)[1].decode()
        # Wine's services, which it has started, may fail at their end; a failure of its own is in its status.
        return self.process.returncode, re.sub('^wine: .*\n', '', said, flags=re.MULTILINE)

    def kill(self):
        self.process.kill()
        self.process.communicate()


class Listener:
    """A port of loopback, and the connection that it accepts."""

    def __init__(self):
        self.listener = socket.create_server(('127.0.0.1', 0))
        self.listener.settimeout(PATIENCE)
        self.port = self.listener.getsockname()[1]
        self.connection = None
        self.received = b''

    def accept(self):
        self.connection = self.listener.accept()[0]
        self.connection.settimeout(PATIENCE)
        return self.connection

    def send(self, data):
        self.connection.sendall(data)

    def receives(self, expected):
        """Waits for what is typed; answers of telnet's own may come in between."""
        def there():
            typed = re.sub(b'\xff(\xfa.*?\xff\xf0|[\xfb-\xfe].)', b'', self.received, flags=re.DOTALL)
            if expected in typed:
                return True
            self.received += self.connection.recv(65536)
            return False
        waitFor(there, lambda: f'{expected} is not among {self.received[-200:]}')

    def breakOff(self):
        """As when the server's machine goes: no orderly end."""
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack('ii', 1, 0))
        self.connection.close()

    def close(self):
        if self.connection:
            self.connection.close()
        self.listener.close()


SESSION = '''#!/bin/sh
stty sane tab3 susp undef kill undef eof undef discard undef erase '^H'
cd {folder}/tree/files
export TERM=${{SESSION_TERM:-cellterm-437}} TERMINFO_DIRS={folder}/terminfo:/etc/terminfo:/lib/terminfo
export LC_ALL=C PATH=/usr/bin:/bin HOME={folder}/home/$TERM LESSHISTFILE=- HISTFILE= PS1='$ '
unset LESS LESSOPEN COLUMNS LINES MC_SKIN DIALOGRC
exec bash --norc --noprofile
'''


class TelnetServer(Listener):
    """A telnet server with a shell in the place of a login, for one session. It is started as inetd would start it, and
    needs no rights. `command` is the server's, but for the shell."""

    def __init__(self, folder, *command):
        super().__init__()
        self.command = *command, folder / 'session.sh'
        self.process = None

    def accept(self):
        connection = super().accept()
        self.process = subprocess.Popen(self.command, stdin=connection, stdout=connection, stderr=subprocess.DEVNULL)
        # The server's copy is to be the last one: the connection ends with it.
        connection.close()

    def close(self):
        super().close()
        if self.process:
            self.process.terminate()
            self.process.wait(PATIENCE)


class Tmux:
    """The same shell in a terminal that is taken as right."""

    def __init__(self, folder):
        self.socket = folder / 'tmux'
        config = folder / 'tmux.conf'
        config.write_text('set -g status off\nset -g escape-time 0\nset -g default-terminal screen\n'
                          'setw -g alternate-screen off\n')
        os.environ.pop('TMUX', None)
        self.do('-u', '-f', config, 'new-session', '-d', '-x', str(COLUMNS), '-y', str(ROWS), '-e',
                'SESSION_TERM=screen', folder / 'session.sh')

    def do(self, *arguments):
        return run('tmux', '-S', self.socket, *arguments)

    def rows(self):
        # With renditions, because line drawing would be letters otherwise.
        text = self.do('capture-pane', '-p', '-e').decode('utf-8', 'replace')
        text = re.sub('\x1b\\[[0-9;:]*m', '', text)
        text = re.sub('\x0e([^\x0f]*)\x0f?', lambda drawn: drawn[1].translate(LINE_DRAWING), text)
        return trimmed(text)

    def type(self, text):
        self.do('send-keys', '-l', text)

    def widen(self, columns):
        self.do('resize-window', '-x', str(columns), '-y', str(ROWS))

    def press(self, *keys):
        names = {'Return': 'Enter', 'Next': 'NPage', 'Prior': 'PPage', 'Delete': 'DC', 'BackSpace': 'BSpace'}
        self.do('send-keys', *[names.get(key, key.replace('ctrl+', 'C-')) for key in keys])

    def close(self):
        self.do('kill-server')
