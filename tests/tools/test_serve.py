# SPDX-License-Identifier: MIT
import os
import signal
import subprocess
import tempfile
import unittest
import urllib.error
import urllib.request
from pathlib import Path

import contenttool


class ServeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name) / "with a blank"
        (self.root / "map5").mkdir(parents=True)
        (self.root / "map5/version.txt").write_text("26.11.21.00\n")
        (self.root / "secret.txt").write_text("not published")
        self.pid_file = self.root / "serve.pid"
        self.temporary = self.root / "tmp"
        self.temporary.mkdir()

    def start(self, *options):
        """Starts serve; returns the process and the base URI that it printed."""
        server = subprocess.Popen(
            [contenttool.TOOLS / "serve", self.root, "--pid-file", self.pid_file, *options],
            stdout=subprocess.PIPE,
            text=True,
            env=dict(os.environ, TMPDIR=str(self.temporary)),
        )
        self.addCleanup(server.wait)
        self.addCleanup(server.terminate)
        self.addCleanup(server.stdout.close)
        return server, server.stdout.readline().strip()

    def read(self, uri, **headers):
        with urllib.request.urlopen(urllib.request.Request(uri, headers=headers)) as reply:
            return reply.status, reply.headers, reply.read()

    def test_serves_the_content_at_the_uri_it_prints(self):
        _, uri = self.start()

        self.assertRegex(uri, r"^http://127\.0\.0\.1:\d+/map5/$")
        self.assertEqual(self.read(uri + "version.txt")[2], b"26.11.21.00\n")

    def test_continues_a_download_where_it_was_cut_off(self):
        _, uri = self.start()

        status, headers, body = self.read(uri + "version.txt", Range="bytes=3-")

        self.assertEqual(status, 206)
        self.assertEqual(headers["Content-Range"], "bytes 3-11/12")
        self.assertEqual(body, b"11.21.00\n")

    def test_does_not_compress_what_is_downloaded(self):
        _, uri = self.start()

        _, headers, body = self.read(uri + "version.txt", **{"Accept-Encoding": "gzip"})

        self.assertIsNone(headers["Content-Encoding"])
        self.assertEqual(len(body), 12)

    def test_serves_nothing_but_the_content(self):
        _, uri = self.start()

        for path in ("/secret.txt", "/", "/map5/%2e%2e/secret.txt"):
            with self.assertRaises(urllib.error.HTTPError) as caught:
                self.read(uri.removesuffix("/map5/") + path)
            self.assertEqual(caught.exception.code, 404)
            caught.exception.close()

    def test_ends_on_both_signals_and_leaves_nothing_behind(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            server, uri = self.start()
            self.assertEqual(int(self.pid_file.read_text()), server.pid)

            server.send_signal(number)

            self.assertEqual(server.wait(20), 0)
            with self.assertRaises(urllib.error.URLError):
                self.read(uri + "version.txt")
            self.assertFalse(self.pid_file.exists())
            self.assertEqual(list(self.temporary.iterdir()), [])

    def test_writes_the_uri_and_the_requests_where_it_is_told(self):
        uri_file, log = self.root / "uri", self.root / "access.log"

        server, uri = self.start("--uri-file", uri_file, "--access-log", log)
        self.read(uri + "version.txt")
        written = uri_file.read_text()
        server.terminate()
        server.wait()

        self.assertEqual(written, f"{uri}\n")
        self.assertIn("GET /map5/version.txt", log.read_text())

    def test_reports_a_port_that_is_taken(self):
        _, uri = self.start()
        port = uri.split(":")[2].split("/")[0]

        done = subprocess.run(
            [contenttool.TOOLS / "serve", self.root, "--port", port], capture_output=True, text=True
        )

        self.assertEqual(done.returncode, 1)
        self.assertIn("serve: nginx ended", done.stderr)

    def test_reports_a_folder_without_content(self):
        done = subprocess.run(
            [contenttool.TOOLS / "serve", self.temporary], capture_output=True, text=True
        )

        self.assertEqual(done.returncode, 1)
        self.assertIn("holds no content", done.stderr)
