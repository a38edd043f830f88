#!/usr/bin/env python3
"""A store on the loopback interface whose packages come with the faults of bad servers, for the tests of installs.

Serves until its standard input ends; prints a line when it listens. Each line of its input lets one download begin.
usage: faulty_store.py PORT KEYWORD ...

The catalogue is a page with a link, of the keyword's id, to the package of each keyword. What a keyword ends in, behind
its last "-", is the fault: the functions below. Each package holds `main.wf` and `content`, which the keyword decides.
There is no index, so nothing but the package itself tells whether it is whole.
"""

import gzip
import io
import os
import socketserver
import sys
import threading
import time
import zipfile
from http.server import BaseHTTPRequestHandler

SHOP = "/plum/download/"
HALF = 3000  # bytes of a package that arrive before it is cut
begins = threading.Semaphore(0)


def package(keyword, version=1):
    content = bytes((i * 31 + version) % 251 for i in range(9000))
    file = io.BytesIO()
    with zipfile.ZipFile(file, "w") as archive:
        archive.writestr("main.wf", f"//guide:{keyword}, new\r\n")
        archive.writestr("content", content)
    return file.getvalue()


class Faults(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    visits = {}

    def log_message(self, *_):
        pass

    def answer(self, body, status=200, length=True, **headers):
        """Without a length the end of the connection is the end; one that is too large makes it a cut."""
        self.close_connection = True
        self.send_response(status)
        if length:
            self.send_header("Content-Length", str(len(body) if length is True else length))
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()
        self.wfile.write(body)

    def do_GET(self):
        if not self.path.startswith(SHOP):
            links = " ".join(f'<a id="{each}" href="{SHOP}{each}.wfp">{each}</a>' for each in sys.argv[2:])
            style = "<style>a { display: inline-block; padding: 5px }</style>"
            self.answer(f"<!doctype html><title>Shop</title>{style}{links}".encode(), Content_Type="text/html")
            return
        keyword = self.path.removeprefix(SHOP).removesuffix(".wfp")
        if keyword not in sys.argv[2:]:
            self.answer(b"no such page", 404)
            return
        self.keyword = keyword
        self.whole = package(keyword)
        visit = self.visits[keyword] = self.visits.get(keyword, 0) + 1
        fault = keyword.rpartition("-")[2]
        if fault != "moved" or visit == 1:
            begins.acquire()
        getattr(self, fault)(visit)

    def range_start(self):
        return int(self.headers["Range"].removeprefix("bytes=").rstrip("-"))

    def part(self, content):
        start = self.range_start()
        self.answer(content[start:], 206, Content_Range=f"bytes {start}-{len(content) - 1}/{len(content)}")

    def cut_whole(self):
        self.answer(self.whole[:HALF], length=len(self.whole))

    def fine(self, _):
        self.answer(self.whole)

    def gone(self, _):
        self.answer(b"<html>There is no such package.</html>", 404)

    def moved(self, visit):
        if visit == 1:
            self.answer(b"<html>It is elsewhere.</html>", 302, Location=self.path)
        else:
            self.answer(self.whole)

    def lost(self, _):
        self.answer(b"<html>It is elsewhere.</html>", 302)

    def page(self, _):
        self.answer(b"<html>Please sign in first.</html>", Content_Type="text/html")

    def zipped(self, _):
        self.answer(gzip.compress(self.whole), Content_Encoding="gzip")

    def cut(self, _):
        self.cut_whole()

    def short(self, _):
        self.answer(self.whole[:HALF], length=False)

    def deaf(self, visit):
        """Ignores the range that is asked for."""
        if visit == 1:
            self.cut_whole()
        else:
            self.answer(self.whole)

    def changed(self, visit):
        """Has another package by the time the rest is asked for."""
        if visit == 1:
            self.cut_whole()
        else:
            self.part(package(self.keyword, 2))

    def resumed(self, visit):
        if visit == 1:
            self.cut_whole()
        else:
            self.part(self.whole)

    def beyond(self, visit):
        """Says that there is nothing behind what is there already."""
        if visit == 1:
            self.cut_whole()
        else:
            self.answer(b"", 416, Content_Range=f"bytes */{len(self.whole)}")

    def slow(self, _):
        self.answer(b"", length=len(self.whole))
        for start in range(0, len(self.whole), 500):
            self.wfile.write(self.whole[start : start + 500])
            self.wfile.flush()
            time.sleep(0.1)

    def silent(self, _):
        self.answer(self.whole[:HALF], length=len(self.whole))
        self.wfile.flush()
        threading.Event().wait()


class Store(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True


with Store(("127.0.0.1", int(sys.argv[1])), Faults) as server:
    threading.Thread(target=server.serve_forever, daemon=True).start()
    print("serving", flush=True)
    for _ in sys.stdin:
        begins.release()
    os._exit(0)
