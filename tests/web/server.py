"""A web server that takes pictures (WebDAV) and shows them, and goes wrong when it is told to."""
import email.utils
import http.server
import os
import pathlib
import shutil
import threading
import time
import urllib.parse

TYPES = {".jpg": "image/jpeg", ".html": "text/html; charset=utf-8"}


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def __init__(self, folder):
        super().__init__(("127.0.0.1", 0), Handler)
        self.folder = pathlib.Path(folder)
        self.asked = []  # time, verb, path and host of every question
        self.ahead = 0  # seconds that its clock is wrong by
        self.wrong = None  # a status in place of every picture; "away": no answer at all
        self.dates = True  # says when a picture was made
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def address(self, path):
        return f"http://127.0.0.1:{self.server_port}/{urllib.parse.quote(path)}"

    def count(self, what, since=0.0):
        return sum(1 for at, verb, path, _ in self.asked if at >= since and verb == "GET" and path.endswith(what))


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def handle_one_request(self):
        try:
            super().handle_one_request()
        except (ConnectionError, BrokenPipeError):
            self.close_connection = True

    def file(self, target=None):
        path = urllib.parse.unquote(urllib.parse.urlsplit(target or self.path).path).lstrip("/")
        return self.server.folder / path

    def note(self):
        self.server.asked.append((time.monotonic(), self.command, urllib.parse.unquote(self.path),
                                  self.headers.get("Host")))

    def date_time_string(self, timestamp=None):
        now = time.time() if timestamp is None else timestamp
        return email.utils.formatdate(now + self.server.ahead, usegmt=True)

    def answer(self, status, headers=(), body=b""):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)

    def do_GET(self):
        self.note()
        file = self.file()
        picture = file.suffix == ".jpg"
        if picture and self.server.wrong == "away":
            self.close_connection = True
            return
        if picture and self.server.wrong:
            return self.answer(self.server.wrong, body=b"wrong")
        try:
            status = os.stat(file)
            body = file.read_bytes()
        except OSError:
            return self.answer(404, body=b"none")
        dated = [("Last-Modified", self.date_time_string(status.st_mtime)),
                 ("ETag", f'"{status.st_mtime_ns:x}-{status.st_size:x}"')] if self.server.dates else []
        if dated and self.headers.get("If-None-Match") == dated[1][1]:
            return self.answer(304, dated)
        self.answer(200, dated + [("Content-Type", TYPES.get(file.suffix, "text/plain"))], body)

    do_HEAD = do_GET

    def do_PUT(self):
        self.note()
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        part = self.file().with_name(self.file().name + ".part")
        part.write_bytes(body)
        os.replace(part, self.file())
        self.answer(201)

    def transfer(self, act):
        self.note()
        self.rfile.read(int(self.headers.get("Content-Length", 0)))
        if not self.file().exists():
            return self.answer(404)
        act(self.file(), self.file(self.headers["Destination"]))
        self.answer(201)

    def do_MOVE(self):
        self.transfer(os.replace)

    def do_COPY(self):
        self.transfer(shutil.copy2)

    def do_DELETE(self):
        self.note()
        there = self.file().exists()
        if there:
            self.file().unlink()
        self.answer(204 if there else 404)

    def do_PROPFIND(self):
        self.rfile.read(int(self.headers.get("Content-Length", 0)))
        self.answer(207 if self.file().is_dir() else 404)

    def do_OPTIONS(self):
        self.answer(200)
