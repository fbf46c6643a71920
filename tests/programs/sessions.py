"""sessions.py BUILD [TEST...]: see `run`."""

import pathlib
import random
import re
import shutil
import sys
import tempfile
import threading
import time
import unittest

from programs import (COLUMNS, ROWS, SESSION, Clipboard, Listener, SampleHost, TelnetServer, Tmux, clipboard, run,
                    waitFor)

build = pathlib.Path(sys.argv.pop(1)).resolve()
folder = None

WORDS = 'lantern harbour copper meadow signal thistle quarry ember willow granite'.split()
LINES = [f'{n:4} ' + ' '.join(WORDS[(n * k) % 10] for k in range(1, 2 + n % 17)) for n in range(1, 201)]


def setUpModule():
    global folder
    folder = pathlib.Path(tempfile.mkdtemp(prefix='kavrelon-programs-'))
    unittest.addModuleCleanup(shutil.rmtree, folder)
    source = pathlib.Path(__file__).resolve().parents[2] / 'samplehost/remote/cellterm.ti'
    run('tic', '-x', '-o', folder / 'terminfo', source)
    (folder / 'session.sh').write_text(SESSION.format(folder=folder))
    (folder / 'session.sh').chmod(0o755)
    files = folder / 'tree/files'
    (files / 'inner').mkdir(parents=True)
    # A home for each terminal: what a program writes there, the other one could read half written.
    for terminal in 'screen', 'cellterm-437':
        settings = folder / 'home' / terminal / '.config/mc/ini'
        settings.parent.mkdir(parents=True)
        # What is free may change from one session to the other.
        settings.write_text('[Layout]\nfree_space=false\n')
    (files / 'text').write_text('\n'.join(LINES) + '\n')
    (files / 'menu').write_text('dialog --title Choice --menu "Which one?" 15 50 6 '
                                '1 Lantern 2 Harbour 3 Copper 4 Meadow 2>~/answer; clear; cat ~/answer; echo " chosen"\n')
    for path in (files / 'menu', files / 'text', files / 'inner', files, folder / 'tree'):
        run('touch', '-d', '2020-02-03 04:05', path)


class Session:
    """Real programs, in one session; what they show is what they show under tmux."""

    @classmethod
    def setUpClass(cls):
        cls.tmux = Tmux(folder)
        cls.addClassCleanup(cls.tmux.close)
        cls.server = TelnetServer(folder, *cls.telnetd)
        cls.addClassCleanup(cls.server.close)
        cls.host = SampleHost(build, folder, cls.server, '--charset', '437', '--close-on-exit')
        cls.addClassCleanup(cls.host.kill)
        cls.server.accept()
        cls.host.shows('$')

    @classmethod
    def tearDownClass(cls):
        cls.host.type('exit\n')
        status, said = cls.host.ended()
        assert (status, said) == (0, ''), f'The session ends with {status}: {said}'

    def alike(self, *texts):
        """Waits until both show the texts, and the same rows; gives them."""
        def there():
            self.seen = self.tmux.rows(), self.host.rows()
            rows = self.seen[0]
            return all(any(text in row for row in rows) for text in texts) and rows == self.seen[1] and rows
        def difference():
            pairs = [f'tmux {one!r}\nhost {other!r}' for one, other in zip(*self.seen) if one != other]
            return f'not alike with {texts}:\n' + ('\n'.join(pairs) or '\n'.join(self.seen[0]))
        return waitFor(there, difference)

    def keys(self, keys):
        """Types a text, in which <Name> is the key of that name."""
        for number, part in enumerate(re.split('<([A-Za-z+]+)>', keys)):
            for terminal in self.tmux, self.host:
                if part:
                    (terminal.press if number % 2 else terminal.type)(part)

    def steps(self, *steps):
        """Each is keys, and what is shown then."""
        for keys, *texts in steps:
            self.keys(keys)
            self.alike(*texts)

    def begin(self, line):
        """A command on an empty screen."""
        self.steps(('clear; echo; echo begins: $((3 * 4))<Return>', 'begins: 12'))
        self.keys(line + '; echo left: $((3 * 3))<Return>')

    def ended(self, *texts):
        """The command has ended: what is typed while a program leaves may be lost. Gives the rows."""
        return self.alike('left: 9', *texts)

    def holds(self, line, *steps, ends=()):
        self.begin(line)
        self.steps(*steps)
        self.ended(*ends)

    def widen(self, columns):
        """By the second entry of the first menu."""
        self.host.press('alt+f', 'Down', 'Return')
        self.tmux.widen(columns)

    def test_widths(self):
        self.begin('less -d text')
        self.alike('   1')
        self.widen(132)
        self.steps(('', *LINES[14:16]), ('  ', LINES[66]), ('/^ 150<Return>', LINES[150]), ('q', ))
        self.ended()
        self.begin('mc -d -u -b . inner')
        self.steps(('', 'UP--DIR'), ('<Down><Down><Down><Escape>3', LINES[15]))
        self.widen(COLUMNS)
        self.steps(('', LINES[15][:70]), ('<Escape>3', 'UP--DIR'), ('<Escape>0', ))
        self.ended()

    def test_interrupt_in_a_flood(self):
        self.host.type('clear; yes "$(seq 500 520)"\n')
        self.host.shows('500', '517')
        self.host.press('ctrl+c')
        # Nothing is left behind the prompt, or lacks before it.
        waitFor(lambda: [row for row in self.host.rows() if row][-1] == '$', lambda: '\n'.join(self.host.rows()))
        self.host.type('echo still there: $((6 * 7))\n')
        self.host.shows('still there: 42')

    def test_paste(self):
        text = ''.join(f'{n:06} {WORDS[n % 10]:12}\n' for n in range(5000))
        self.assertEqual(len(text), 100_000)
        pasted = folder / 'pasted'
        pasted.unlink(missing_ok=True)
        self.host.type(f'clear; stty -echo; head -c 100000 >{pasted}; stty echo; echo taken: $((50 + 5))\n')
        waitFor(pasted.exists, 'The command is not begun.')
        self.addCleanup(Clipboard(text).close)
        self.host.press('ctrl+v')
        self.host.shows('taken: 55')
        self.assertEqual(pasted.read_text(), text)


class SmallServer(Session, unittest.TestCase):
    """What concerns the server, with another one."""
    telnetd = 'busybox', 'telnetd', '-i', '-K', '-f', '/dev/null', '-l'


class Programs(Session, unittest.TestCase):
    telnetd = '/usr/sbin/telnetd', '-h', '-E'

    def test_shell(self):
        self.holds('seq 30; echo $(seq 100 160); printf %s $(seq 200 270); echo', ends=['269270'])
        self.steps(('echo ' + 'abcdefghijklmnopqrstuvwxyz' * 4, 'klmnopqrstuvwxyz'),
                   ('<BackSpace><BackSpace><ctrl+a>: <Return>', ))

    def test_pager(self):
        self.holds('less -d text', ('', '   1', 'text'), (' ', '  18'), (' ', '  35'), ('b', '  18'), ('jj', '  36'),
                   ('k', '  35'), ('/^ 150<Return>', ' 151 '), ('?copper<Return>', ' 182'), ('G', ' 200', '(END)'),
                   ('q', ))

    def test_editor(self):
        self.holds('(cd ~; nano --ignorercfiles draft)', ('', 'New File', '^X Exit'),
                   ('First line of the draft<Return><Return>Third line, which is longer than the screen is wide: '
                    + 'and so on, ' * 5 + 'until here.', 'until here.'),
                   ('<Up><Up><Home>The ', 'The First'),
                   ('<Down><End><BackSpace><ctrl+s>', 'Wrote 2 lines'), ('<ctrl+x>', ))
        self.holds('cat ~/draft', ends=['The First line of the draft', 'until here.'])

    def test_screen_editor(self):
        self.holds('cp text ~; (cd ~; vim.tiny -N -n -u NONE -i NONE -c "set nu ru" text; cksum text)',
                   ('', '200L', '1,1'), ('<Next><Next><Down><Down><End>', ), ('<Prior><Up><Home>', ),
                   ('/quarry ember<Return>', '31,43'), ('z<Return>', ), ('zb', ),
                   ('OInserted above<Escape>', 'Inserted above'),
                   ('A, and so on' + ', and so on' * 8 + '<Escape>', ), ('j3dd', ), ('kJ5x', ), ('p', ), ('uu<ctrl+l>', ),
                   (':%s/harbour/port/g<Return>', 'substitutions'), ('vjjy', ), ('P', ),
                   (':split<Return>G', '198,2'), ('zz', ), ('<ctrl+w>jgg', 'Top'), ('i<Return><Return><Escape>', '3,1'),
                   (':wq<Return>', ), (':q<Return>', ))

    def test_dialog(self):
        for keys, answer in ('<Down><Down><Up><Down>', '3 chosen'), ('<Tab>', ' chosen'):
            self.holds('. ./menu', ('', 'Which one?', 'Meadow'), (keys, ), ('<Return>', ), ends=[answer])

    def test_second_dialog(self):
        def answer(options, *steps, ends):
            self.holds(f'whiptail {options} 2>~/answer; clear; cat ~/answer', *steps, ends=ends)
        answer('--checklist "Which ones?" 12 50 3 1 Lantern on 2 Harbour off 3 Copper off 4 Meadow off',
               # It takes Ctrl+Z, which the Up key sends, for itself; Left goes up too.
               ('', 'Which ones?'), ('<Down> <Down><Down>', 'Meadow'), (' <Left><Left><Left> ', 'Lantern'), ('<Tab>', ),
               ('<Return>', ), ends=['"2" "4"'])
        answer('--inputbox "A name?" 9 50 "Old name"', ('', 'Old name'),
               ('<Home>An <Right><Delete><End><BackSpace>', 'An Od nam'), ('<Return>', ), ends=['An Od nam'])

    def test_file_manager(self):
        self.holds('mc -d -u -b . inner', ('', 'inner', '10Quit'), ('<Down><Down><Down>', 'text'),
                   ('<Escape>3', 'harbour copper'), ('<Escape>3', 'UP--DIR'), ('<Escape>0', ))

    def test_copying(self):
        self.begin('seq 3000 3021')
        rows = self.ended()
        # From below the menu to the lower right corner: all cells.
        self.host.drag((4, 50), (1276, 796))
        before = Clipboard('nothing copied')
        self.addCleanup(before.close)
        self.host.press('ctrl+c')
        padded = [row.ljust(COLUMNS) for row in rows]
        expected = '\n'.join(padded[:-1]) + padded[-1]
        waitFor(lambda: clipboard() not in (None, 'nothing copied'), 'Nothing is copied.')
        self.assertEqual(clipboard(), expected)


class Servers(unittest.TestCase):
    """Servers that are no ordinary ones."""
    maxDiff = None

    def start(self, *options):
        self.server = Listener()
        self.addCleanup(self.server.close)
        self.host = SampleHost(build, folder, self.server, *options)
        self.addCleanup(self.host.kill)
        self.server.accept()

    def test_lost(self):
        self.start()
        self.server.send(b'before it was lost')
        self.host.shows('before it was lost')
        self.server.breakOff()
        # Why, Wine does not tell: it takes the reset from the connection, and gives the end of the data instead.
        self.host.isCalled('has ended: The ')
        self.host.shows('before it was lost')
        self.host.press('Return')
        self.server.accept()
        self.server.send(b'again')
        self.host.shows('again')
        self.assertEqual(self.host.rows()[0], 'again')

    def test_lost_while_typing(self):
        """The sample host learns of it by sending."""
        self.start('--close-on-exit')
        self.host.pause()
        self.host.type('x')
        self.server.breakOff()
        self.host.resume()
        status, said = self.host.ended()
        self.assertEqual(status, 1)
        self.assertIn(f'The connection to 127.0.0.1:{self.server.port} is lost: ', said)

    def test_slow(self):
        """Each character is shown while the next one is a second away, whatever it is a part of."""
        self.start('--close-on-exit')
        steps = (b'a', 'a'), (b'\x1b', 'a'), (b'[', 'a'), (b'C', 'a'), (b'\xc3', 'a'), (b'\xa9', 'a é'), (b'!', 'a é!')
        for byte, shown in steps:
            self.server.send(byte)
            time.sleep(1)
            waitFor(lambda: self.host.rows()[0] == shown, lambda: f'{shown!r} is {self.host.rows()[0]!r}')
        self.server.close()
        self.assertEqual(self.host.ended(), (0, ''))

    def test_random(self):
        """However the bytes are cut, they show the same."""
        chance = random.Random(20)
        data = b''
        while len(data) < 60_000:
            data += chance.choice((chance.randbytes(9), b'\x1b[', b';%d' % chance.randrange(99), b'HJKm', b'7\n'))
        screens = []
        for longest in len(data), 700:
            self.start('--raw', '--charset', '437', '--exact-colours', '--close-on-exit')
            rest = data
            while rest:
                size = chance.randrange(longest) + 1 if longest < len(data) else longest
                self.server.send(rest[:size])
                rest = rest[size:]
            self.server.close()
            self.assertEqual(self.host.ended(), (0, ''))
            screens.append(self.host.rows())
        self.assertEqual(*screens)
        self.assertTrue(any(screens[0]))

    def test_random_telnet(self):
        """Whatever the server asks for, the session goes on."""
        self.start('--close-on-exit')
        self.server.send(random.Random(21).randbytes(60_000))
        self.host.type('keys')
        self.server.receives(b'keys')
        self.server.close()
        self.assertEqual(self.host.ended()[0], 0)

    def test_keys_in_a_flood(self):
        """20 MB, and more until the keys that are pressed meanwhile have arrived."""
        self.start('--close-on-exit')
        line = b'The quick brown fox %07d jumps over the lazy dog and runs on and on and on.\r\n'
        block = b''.join(line % n for n in range(12000))
        def flood():
            for count in range(1000):
                self.server.send(block)
                begun.set()
                if count >= 20 and arrived.is_set():
                    break
            self.server.send(b'at rest')
        begun, arrived = threading.Event(), threading.Event()
        flooding = threading.Thread(target=flood)
        flooding.start()
        begun.wait()
        self.host.type('keys')
        self.server.receives(b'keys')
        arrived.set()
        flooding.join()
        rows = self.host.shows('at rest')
        last = [(line % n).decode().rstrip() for n in range(12001 - ROWS, 12000)]
        self.assertEqual(rows, last + ['at rest'])


if __name__ == '__main__':
    unittest.main(verbosity=2, failfast=True)
