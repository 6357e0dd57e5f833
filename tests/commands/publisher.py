"""A publisher of archives on loopback that fails on request."""
import http.server
import pathlib
import threading

PAGE = b"<!doctype html><title>Please log in</title>\n"


class Publisher:
    """Serves the files of a folder. The first part of a path says how:
      plain     correctly, with ranges
      moved     from another place, to which it leads on
      noranges  whole, whatever range was requested
      cut       half of what was requested of an archive, then the connection ends
      stall     half of what was requested of an archive, then nothing more
      html      a web page instead, with status 200
      huge      more than any disk holds, it says
      flood     headers without end
      large     more than any model has, it says
      missing   404
    `requests` has an entry for each archive that was asked for: the path and the requested range.
    """

    def __init__(self, folder):
        self.folder, self.requests = pathlib.Path(folder), []
        publisher = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                publisher.answer(self)

            def handle(self):
                try:
                    super().handle()
                except ConnectionError:
                    pass  # the other side went

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.server.daemon_threads = True
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def url(self, how):
        return f"http://127.0.0.1:{self.server.server_port}/{how}"

    def answer(self, request):
        how, _, name = request.path.lstrip("/").partition("/")
        file, asked = self.folder / name, request.headers.get("Range")
        is_archive = file.suffix in (".zip", ".bz2", ".tgz")
        if is_archive:
            self.requests.append(f"{request.path} {asked or 'whole'}")
        if how == "missing" or (how != "html" and not file.is_file()):
            request.send_error(404)
            return
        while how == "flood" and is_archive:
            request.wfile.write(b"HTTP/1.1 200 OK\r\n" + b"X-More: and more\r\n" * 1000)
        if how == "moved":
            request.send_response(302)
            request.send_header("Location", self.url("plain") + "/" + name)
            request.end_headers()
            return
        body = PAGE if how == "html" else file.read_bytes()
        start = int(asked.removeprefix("bytes=").partition("-")[0]) if asked and how not in ("noranges", "html") else 0
        if start and start >= len(body):
            request.send_error(416)
            return
        request.send_response(206 if start else 200)
        if start:
            request.send_header("Content-Range", f"bytes {start}-{len(body) - 1}/{len(body)}")
        body = body[start:]
        length = {"huge": 1 << 62, "large": 3 << 30}.get(how, len(body)) if is_archive else len(body)
        request.send_header("Content-Length", str(length))
        request.end_headers()
        broken = is_archive and how in ("cut", "stall")
        request.wfile.write(body[: (len(body) + 1) // 2] if broken else b"" if length > len(body) else body)
        if length > len(body) or broken and how == "stall":
            request.wfile.flush()
            threading.Event().wait()
