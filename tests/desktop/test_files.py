"""Files of the phone in the user's Downloads folder, on the real disk and with the simulated phone."""
import base64
import contextlib
import hashlib
import os
import pathlib
import shutil
import subprocess
import tempfile

from brenvale_desk import PROGRAM, DeskTest, Recorder, main

MEBIBYTE = 1 << 20
PHONE = pathlib.Path(PROGRAM).with_name('brenvale-phone')


@contextlib.contextmanager
def small_disk(folder, size):
    """A disk of its own of that size under the folder; needs root."""
    subprocess.run(['mount', '-t', 'tmpfs', '-o', f'size={size}', 'tmpfs', folder], check=True)
    try:
        yield
    finally:
        subprocess.run(['umount', '-l', folder], check=True)


def write_large_file(path, mebibytes):
    """Writes mebibytes of which no two are alike, and gives their SHA-256."""
    piece = os.urandom(MEBIBYTE - 8)
    digest = hashlib.sha256()
    with open(path, 'wb') as file:
        for number in range(mebibytes):
            numbered = number.to_bytes(8, 'big') + piece
            digest.update(numbered)
            file.write(numbered)
    return digest.digest()


def sha256(path):
    with open(path, 'rb') as file:
        return hashlib.file_digest(file, 'sha256').digest()


class FilesTest(DeskTest):
    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk)
        self.program = self.start()
        self.downloads = pathlib.Path(self.desk.env['HOME']) / 'Downloads'

    def send_with_phone(self, *arguments):
        subprocess.run([PHONE, '--port', str(self.program.port), 'file', *arguments], check=True, timeout=60,
                       stdout=subprocess.DEVNULL)

    def wait_closed(self, name, count=1):
        self.program.wait_for_line(rf'\[WebSocketServer\] File handle closed for {name}', count)

    def test_a_file_arrives_whole_in_a_folder_that_was_missing(self):
        contents = os.urandom(3_000_001)
        for count, options in enumerate(([], ['--escape-slashes']), 1):
            source = self.desk.root / 'photo 1.jpg'
            source.write_bytes(contents)
            self.send_with_phone(*options, source)
            self.wait_closed('photo 1.jpg', count)
            arrived = (self.downloads / 'photo 1.jpg').read_bytes()
            self.assertEqual(hashlib.sha256(arrived).digest(), hashlib.sha256(contents).digest())
            (self.downloads / 'photo 1.jpg').unlink()

    def test_a_gibibyte_arrives_whole_on_the_disk(self):
        # The folder for temporary files may be memory; this one is on a disk by convention.
        with tempfile.TemporaryDirectory(dir='/var/tmp', prefix='testdesk.') as name:
            folder = pathlib.Path(name)
            if shutil.disk_usage(folder).free < 2560 * MEBIBYTE:
                self.skipTest('the disk has less than 2.5 GiB free')
            source = folder / 'film.mp4'
            expected = write_large_file(source, 1024)
            (folder / 'Downloads').mkdir()
            self.downloads.symlink_to(folder / 'Downloads')
            self.send_with_phone(source)
            self.wait_closed('film.mp4')
            self.assertEqual(sha256(folder / 'Downloads/film.mp4'), expected)

    def test_the_user_is_told(self):
        source = self.desk.root / 'note.txt'
        source.write_bytes(b'hello')
        self.send_with_phone(source)
        calls = self.recorder.wait_for(3)
        self.assertEqual([(call['summary'], call['body']) for call in calls],
                         [('Receiving File...', 'note.txt (0%)'),
                          ('File Received', "Successfully received 'note.txt'"),
                          ('File Received', 'note.txt (100%)')])
        self.assertTrue(calls[0]['hints']['suppress-sound'])
        self.assertEqual(calls[2]['replaces'], calls[0]['id'])
        self.assertEqual(len(self.recorder.live()), 2)

    def test_what_is_no_folder_takes_no_file(self):
        self.downloads.write_text('in the way')
        phone = self.connect(self.program)
        phone.send_json(action='file_transfer_start', fileName='a.txt')
        self.program.wait_for_line(r'\[WebSocketServer\] Failed to create file handle: .+')
        self.assertEqual(self.downloads.read_text(), 'in the way')
        self.assertEqual(self.recorder.calls(), [])

    def test_a_full_disk_is_logged_and_passes(self):
        if os.geteuid() != 0:
            self.skipTest('only root can make a small disk')
        self.downloads.mkdir()
        phone = self.connect(self.program)
        chunk = base64.b64encode(bytes(600_000)).decode()
        try:
            with small_disk(self.downloads, '1m'):
                phone.send_json(action='file_transfer_start', fileName='a.bin', fileSize=1_200_000)
                phone.send_json(action='file_chunk', fileName='a.bin', fileData=chunk)
                phone.send_json(action='file_chunk', fileName='a.bin', fileData=chunk, isLast=True)
                self.program.wait_for_line(r'\[WebSocketServer\] Error writing chunk: No space left on device')
                (self.downloads / 'a.bin').write_bytes(b'')
                phone.send_json(action='file_chunk', fileName='a.bin', fileData='ZW5k', isLast=True)
                self.wait_closed('a.bin')
                self.assertEqual((self.downloads / 'a.bin').read_bytes(), b'end')
        except subprocess.CalledProcessError:
            self.skipTest('no disk can be mounted here')


if __name__ == '__main__':
    main()
