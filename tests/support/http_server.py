#!/usr/bin/env python3
"""A server on the loopback interface that behaves oddly on request, for the tests of the HTTP client.

Prints its port on standard output and serves until its standard input ends.
usage: http_server.py [CERTIFICATE KEY]     (with both it speaks HTTPS)

Besides the pages below, a POST to /upload is read by Python's own e-mail parser, and the answer says what it
found.
"""

import email.parser
import email.policy
import gzip
import hashlib
import http.server
import json
import socket
import ssl
import struct
import sys
import threading
import zlib

GIGABYTE = 1 << 30
released = threading.Event()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def answer(self, body, status=200, **headers):
        self.send_response(status)
        self.send_header("Content-Length", str(len(body)))
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()
        self.wfile.write(body)

    def begin(self, **headers):
        self.close_connection = True
        self.send_response(200)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()

    def reset(self):
        self.close_connection = True
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.connection.close()

    def do_GET(self):
        name, _, argument = self.path.strip("/").partition("/")
        page = getattr(self, "page_" + name.replace("-", "_"), None)
        if page is None:
            self.answer(b"no such page", 404)
        else:
            try:
                page(argument)
            except (BrokenPipeError, ConnectionResetError):
                self.close_connection = True

    def page_text(self, _):
        self.answer("héllo 你好".encode())

    def page_gbk(self, _):
        self.answer("你好，世界".encode("gbk"), Content_Type="text/html; charset=utf-8")

    def page_headers(self, _):
        self.answer(json.dumps({name.lower(): value for name, value in self.headers.items()}).encode(),
                    Set_Cookie="a=b")

    def page_request(self, _):
        self.answer(self.requestline.encode())

    def page_empty(self, _):
        self.answer(b"")

    def page_status(self, code):
        self.answer(b"status body", int(code))

    def page_size(self, count):
        self.answer(bytes(i * 31 % 251 for i in range(int(count))))

    def page_chunked(self, _):
        self.begin(Transfer_Encoding="chunked")
        for piece in (b"one ", b"two ", b"three"):
            self.wfile.write(b"%x\r\n%s\r\n" % (len(piece), piece))
            self.wfile.flush()
        self.wfile.write(b"0\r\n\r\n")

    def page_chunked_cut(self, _):
        self.begin(Transfer_Encoding="chunked")
        self.wfile.write(b"10\r\nonly part")

    def page_chunked_end(self, _):
        self.begin(Transfer_Encoding="chunked")
        self.wfile.write(b"4\r\none \r\n9\r\ntwo three\r\n0\r\n")

    def page_long_head(self, _):
        self.close_connection = True
        self.wfile.write(b"HTTP/1.1 200 OK\r\n")
        for _ in range(100_000):
            self.wfile.write(b"A: " + b"x" * 1000 + b"\r\n")

    def page_gzip_cut(self, framing):
        half = gzip.compress("zipped 你好".encode() * 100)[:-9]
        if framing == "length":
            self.answer(half, Content_Encoding="gzip")
        elif framing == "chunks":
            self.begin(Content_Encoding="gzip", Transfer_Encoding="chunked")
            self.wfile.write(b"%x\r\n%s\r\n0\r\n\r\n" % (len(half), half))
        else:
            self.begin(Content_Encoding="gzip")
            self.wfile.write(half)

    def page_gzip_whole_but_short(self, _):
        self.begin(Content_Encoding="gzip", Content_Length="1000")
        self.wfile.write(gzip.compress("zipped 你好".encode()))

    def page_chunked_garbage(self, _):
        self.begin(Transfer_Encoding="chunked")
        self.wfile.write(b"zz\r\nwhat\r\n")

    def page_gzip(self, _):
        self.answer(gzip.compress("zipped 你好".encode()), Content_Encoding="gzip")

    def page_deflate(self, _):
        self.answer(zlib.compress("deflated 你好".encode()), Content_Encoding="deflate")

    def page_gzip_broken(self, _):
        self.answer(b"\x1f\x8b\x08\x00 this is no gzip", Content_Encoding="gzip")

    def page_gzip_bomb(self, _):
        packer = zlib.compressobj(9, zlib.DEFLATED, 31)
        block = bytes(1 << 20)
        packed = b"".join(packer.compress(block) for _ in range(600)) + packer.flush()
        self.answer(packed, Content_Encoding="gzip")

    def page_until_close(self, _):
        self.begin()
        self.wfile.write(b"no length")

    def page_short(self, _):
        self.begin(Content_Length="100")
        self.wfile.write(b"only this")

    def page_long(self, _):
        self.begin(Content_Length="4")
        self.wfile.write(b"four and more")

    def page_bad_length(self, _):
        self.begin(Content_Length="-5")
        self.wfile.write(b"body")

    def page_reset(self, _):
        self.reset()

    def page_reset_midway(self, _):
        self.begin(Content_Length="1000000")
        self.wfile.write(bytes(1000))
        self.wfile.flush()
        self.reset()

    def page_close(self, _):
        self.close_connection = True

    def page_garbage(self, _):
        self.close_connection = True
        self.wfile.write(b"\x00\xff\xfe this is not HTTP\r\n\r\n")

    def page_held(self, _):
        released.wait()
        self.answer(b"released")

    def page_stalled(self, _):
        self.begin(Content_Length="10")
        self.wfile.write(b"part")
        self.wfile.flush()
        released.wait()

    def page_release(self, _):
        released.set()
        self.answer(b"ok")

    def page_huge(self, announced):
        self.begin(**({"Content_Length": str(5 * GIGABYTE)} if announced else {}))
        block = bytes(1 << 20)
        for _ in range(5 * 1024):
            self.wfile.write(block)

    def page_redirect(self, count):
        left = int(count)
        self.answer(b"", 302, Location=f"/redirect/{left - 1}" if left > 1 else "/text")

    def page_redirect_forever(self, _):
        self.answer(b"", 302, Location="/redirect-forever")

    def page_redirect_to(self, address):
        self.answer(b"", 302, Location=address)

    def do_POST(self):
        if self.path == "/upload-redirect":
            self.rfile.read(int(self.headers["Content-Length"]))
            self.answer(b"", 307, Location="/upload")
            return
        if self.path == "/upload-chunked-end":
            self.rfile.read(int(self.headers["Content-Length"]))
            self.begin(Transfer_Encoding="chunked")
            self.wfile.write(b"6\r\nthanks\r\n0\r\n")
            return
        if self.path == "/upload-reset":
            self.rfile.read(100)
            self.reset()
            return
        if self.path == "/upload-refused":
            self.close_connection = True
            self.rfile.read(int(self.headers["Content-Length"]))
            self.answer("拒绝".encode("gbk"), 403, Content_Type="text/plain; charset=gbk")
            return
        length = int(self.headers["Content-Length"])
        if length > 100_000_000:
            self.answer(json.dumps({"length": length, "received": self.count(length)}).encode())
            return
        body = self.rfile.read(length)
        head = f"Content-Type: {self.headers['Content-Type']}\r\nMIME-Version: 1.0\r\n\r\n".encode()
        message = email.parser.BytesParser(policy=email.policy.HTTP).parsebytes(head + body)
        parts = []
        for part in message.iter_parts():
            content = part.get_payload(decode=True)
            parts.append({
                "name": part.get_param("name", header="content-disposition"),
                "filename": part.get_filename(),
                "type": part["Content-Type"],
                "sha256": hashlib.sha256(content).hexdigest(),
            })
        self.answer(json.dumps({"length": length, "parts": parts, "defects": len(message.defects)}).encode())

    def count(self, length):
        received = 0
        while received < length and (block := self.rfile.read(min(length - received, 1 << 20))):
            received += len(block)
        return received


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        pass  # clients that go away in the middle are what the tests are about


def main():
    server = Server(("127.0.0.1", 0), Handler)
    if len(sys.argv) > 2:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(sys.argv[1], sys.argv[2])
        server.socket = context.wrap_socket(server.socket, server_side=True)
    print(server.server_address[1], flush=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    sys.stdin.read()


main()
