#!/usr/bin/python3
"""check_page.py PROGRAM_FOLDER AXE OUTPUT: the web page as visitors see it, in a real Chromium."""
import io
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from PIL import Image, ImageDraw, ImageStat

from browser import Browser, Tab
from server import Server

program, axe_file, output = (pathlib.Path(each) for each in sys.argv[1:4])
axe = axe_file.read_text(encoding="utf-8")
output.mkdir(parents=True, exist_ok=True)
SETTINGS = """[Einstellungen]
Server=127.0.0.1
Protocol=http
Port={port}
Verzeichnis=my cam
Treiber=Test picture
Framerate=1000
Autostart=1
lastpictures=1
lastpictureanz=3
PageTitle=Garden & "yard" <1>
PageFile=our cam.html
[Cameras]
Cam0=Test picture|test:640x480
"""

AGE = "document.querySelector('#age').textContent"
SHOWN = ("[...document.querySelectorAll('#view img')].some(each => each.complete && each.naturalWidth)"
         " && document.documentElement.dataset.state")
NARROW = "document.documentElement.scrollWidth <= innerWidth"


class Stand:
    """The program, the server that it publishes to, and a browser."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="stillpost-web-"))
        self.site = self.folder / "site"
        self.cam = self.site / "my cam"
        self.cam.mkdir(parents=True)
        self.server = Server(self.site)
        (self.folder / "program").mkdir()
        (self.folder / "program/ftpOptions.ini").write_text(
            SETTINGS.format(port=self.server.server_port), encoding="utf-8")
        self.environment = {key: value for key, value in os.environ.items()
                            if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        self.running = None
        self.browser = Browser()
        self.first = None

    def tab(self):
        """The one that follows the camera."""
        if not self.first:
            self.first = Tab(self.browser, 640, 600)
            self.first.go(self.page())
            self.first.wait(SHOWN)
        return self.first

    def command(self, *arguments):
        return subprocess.run([program / "stillpost", "--folder", self.folder / "program", *arguments],
                              env=self.environment, capture_output=True, text=True, timeout=60, check=False)

    def publish(self):
        self.running = subprocess.Popen(
            [program / "stillpost", "--folder", self.folder / "program", "/autostarter"],
            env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def stop(self):
        if self.running:
            self.running.send_signal(signal.SIGTERM)
            self.running.wait(30)
            self.running = None

    def page(self, name="our cam.html"):
        return self.server.address(f"my cam/{name}")

    def variant(self, file, **data):
        """The same page with other data- attributes, as somebody changes them by hand."""
        text = (self.cam / "our cam.html").read_text(encoding="utf-8")
        for key, value in data.items():
            text = re.sub(f'data-{key}="[^"]*"', f'data-{key}="{value}"', text, count=1)
        (self.cam / file).write_text(text, encoding="utf-8")
        return self.page(file)

    def age(self, seconds):
        os.utime(self.cam / "pw.jpg", (time.time() - seconds,) * 2)

    def close(self):
        self.stop()
        self.browser.close()
        self.server.shutdown()
        shutil.rmtree(self.folder, ignore_errors=True)


def until(condition, seconds, what):
    end = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < end, f"never: {what}"
        time.sleep(0.1)


def equal(found, wanted):
    assert found == wanted, f"{found!r} in place of {wanted!r}"


def matches(text, pattern):
    assert re.fullmatch(pattern, text), f"{text!r} is not like {pattern!r}"


def findings(tab):
    tab.run(axe + "; true")
    found = tab.run("axe.run(document).then(all => all.violations.concat(all.incomplete).flatMap(each => each.nodes"
                    ".map(node => each.id + ' ' + node.target + ': ' + node.any.map(one => one.message))))")
    # Of a line that is broken axe cannot tell; where it is not, it has measured the same colours.
    found = [each for each in found if not (each.startswith("color-contrast #which") and "partially overlaps" in each)]
    assert not found, f"axe-core: {found}"


def put_there(stand):
    """The program puts its page there, again, and nothing over what is not its own."""
    page = stand.cam / "our cam.html"
    for _ in range(2):
        done = stand.command("--web-page")
        equal((done.returncode, done.stdout), (0, "The page is there.\n"))
    ours = page.read_bytes()
    assert len(ours) < 15000, len(ours)
    page.write_text("mine", encoding="utf-8")
    equal(stand.command("--web-page").returncode, 1)
    equal(page.read_text(encoding="utf-8"), "mine")
    page.write_bytes(ours)


def swaps_without_flicker(stand):
    """Frames drawn while pictures are swapped: none without a picture."""
    tab = stand.tab()
    equal(tab.run("document.title + '|' + document.querySelector('h1').textContent"),
          'Garden & "yard" <1>|Garden & "yard" <1>')
    box = tab.run("(({x, y, width, height}) => [x, y, x + width, y + height])"
                  "(document.querySelector('#view').getBoundingClientRect())")
    before = len(stand.server.asked)
    drawn = [Image.open(io.BytesIO(each)).convert("RGB").crop([round(each) for each in box])
             for each in tab.frames(8)]
    swaps = sum(1 for _, verb, path, _ in stand.server.asked[before:] if verb == "GET" and path.endswith("pw.jpg"))
    # A place without a picture has one colour.
    life = [max(ImageStat.Stat(each).stddev) for each in drawn]
    print(f"   {len(drawn)} frames over {swaps} questions; contrast {min(life):.0f} to {max(life):.0f}")
    assert swaps >= 5 and len(drawn) > swaps, (swaps, len(drawn))
    assert min(life) > 10, [round(each) for each in life]
    equal(tab.run("document.querySelectorAll('#view img').length") <= 2, True)
    matches(tab.run(AGE), r"now|[1-3] seconds? ago")
    others = {host for *_, host in stand.server.asked}
    equal(others, {f"127.0.0.1:{stand.server.server_port}"})
    equal(tab.drain(), [])


def hidden_tab_rests(stand):
    tab = stand.tab()
    other = Tab(stand.browser)  # in front of the first one
    tab.wait("document.hidden")
    time.sleep(0.5)
    since = time.monotonic()
    time.sleep(4)
    equal(stand.server.count("pw.jpg", since), 0)
    since = time.monotonic()
    other.close()
    stand.browser.ask("Target.activateTarget", targetId=tab.target)
    until(lambda: stand.server.count("pw.jpg", since) > 0, 1.5, "asked at once when it is seen again")


def history_by_keyboard(stand):
    until((stand.cam / "pw2.jpg").exists, 60, "two earlier pictures")
    tab = stand.tab()
    focused = "document.activeElement"
    tab.run("document.body.focus()")
    tab.key("Tab")
    equal(tab.run(f"{focused}.tagName + {focused}.textContent"), "SUMMARYEarlier pictures")
    tab.key("Enter")
    tab.wait("document.querySelectorAll('li img').length === 2")
    tab.key("Tab")
    label = tab.run(f"{focused}.firstChild.alt")
    matches(label, r"Earlier picture 1 of 2 – .*\d\d:\d\d")
    findings(tab)
    tab.key("Enter")
    tab.wait("document.querySelector('dialog').open")
    equal(tab.run("document.querySelector('#which').textContent"), label)
    equal(tab.run(f"{focused}.id"), "older")
    findings(tab)
    tab.key("ArrowRight")
    tab.wait("document.querySelector('#which').textContent.startsWith('Earlier picture 2 of 2')")
    tab.key("ArrowRight")
    tab.key("ArrowLeft")
    tab.wait("document.querySelector('#which').textContent.startsWith('Earlier picture 1 of 2')")
    tab.wait("document.querySelector('dialog img').naturalWidth > 0")
    tab.picture(output / "history-open.png")
    tab.key("Escape")
    tab.wait("!document.querySelector('dialog').open")
    equal(tab.run(f"{focused}.parentNode.tagName"), "LI")
    tab.picture(output / "desktop-strip.png")


def without_script(stand):
    since = time.monotonic()
    tab = Tab(stand.browser, script=False)
    tab.go(stand.page())
    until(lambda: stand.server.count("our cam.html", since) > 1, 12, "loaded anew without a script")
    assert stand.server.count("pw.jpg", since) > 0
    tab.picture(output / "no-script.png")
    tab.close()


def tells_the_age(stand):
    """In the visitor's language, by the server's clock."""
    address = stand.variant("minute.html", interval=60)
    for language, seconds, wanted in (
            ("en-GB,en", 120, "2 minutes ago"), ("de-AT", 121, "vor 2 Minuten"),
            ("fr-CH,de", 125, "il y a 2 minutes"), ("it,de;q=0.5", 120, "vor 2 Minuten"), ("ja", 35, "3[5-9] seconds ago")):
        stand.server.ahead = 86400 if language == "de-AT" else 0
        stand.age(seconds)
        tab = Tab(stand.browser, languages=language)
        tab.go(address)
        tab.wait(SHOWN)
        matches(tab.run(AGE), wanted)
        equal(tab.run("document.documentElement.lang"), wanted[:1] == "v" and "de" or wanted[:1] == "i" and "fr" or "en")
        tab.close()
    stand.server.ahead = 0


def tells_offline(stand):
    for language, wanted in (("en", r"offline since \d\d?:\d\d.*"), ("de", r"offline seit \d\d:\d\d"),
                             ("fr", r"hors ligne depuis \d\d:\d\d")):
        stand.age(4)
        tab = Tab(stand.browser, languages=language)
        tab.go(stand.page())
        tab.wait(SHOWN + " === 'offline'")
        matches(tab.run(AGE), wanted)
        equal(tab.run("document.querySelector('#said').textContent"), tab.run(AGE))
        findings(tab)
        tab.close()
    stand.age(3 * 86400)
    tab = Tab(stand.browser)
    tab.go(stand.variant("five.html", interval=5))
    tab.wait(SHOWN + " === 'offline'")
    matches(tab.run(AGE), r"offline since \d+ \w+ \d{4}, \d\d:\d\d")
    tab.picture(output / "offline.png")
    # Back again.
    stand.age(0)
    tab.wait(SHOWN + " === 'live'")
    equal(tab.run("document.querySelector('#said').textContent"), "New pictures are coming again")
    tab.close()


def faults_keep_the_picture(stand):
    stand.age(0)
    tab = Tab(stand.browser)
    tab.go(stand.variant("five.html", interval=5))
    tab.wait(SHOWN)
    for wrong in (404, "away"):
        stand.server.wrong = wrong
        tab.wait(f"{AGE}.includes('cannot be reached')", 15)
        assert tab.run(SHOWN)
        stand.server.wrong = None
        tab.wait(f"!{AGE}.includes('cannot be reached')", 15)
    # Half a picture is none.
    whole = (stand.cam / "pw.jpg").read_bytes()
    (stand.cam / "pw.jpg").write_bytes(b"\xff\xd8\xff")
    tab.wait(f"{AGE}.includes('cannot be reached')", 15)
    assert tab.run(SHOWN)
    (stand.cam / "pw.jpg").write_bytes(whole)
    tab.close()
    # Nothing there yet, then a picture.
    (stand.cam / "pw.jpg").unlink()
    tab = Tab(stand.browser)
    tab.go(stand.page())
    tab.wait(f"{AGE}.includes('cannot be reached')")
    tab.picture(output / "nothing.png")
    (stand.cam / "pw.jpg").write_bytes(whole)
    tab.wait(SHOWN + " === 'live'", 15)
    tab.close()
    # Without any server, as in a folder of this computer.
    tab = Tab(stand.browser)
    tab.go((stand.cam / "five.html").as_uri())
    tab.wait(SHOWN + " === 'live'")
    tab.close()
    # A server that says nothing of the time.
    stand.server.dates = False
    tab = Tab(stand.browser)
    tab.go(stand.page())
    tab.wait(SHOWN)
    equal(tab.run(AGE), "")
    stand.server.dates = True
    tab.close()


def fits_everywhere(stand):
    stand.variant("minute.html", interval=60)
    stand.variant("none.html", history=0, interval=60)
    stand.variant("long.html", interval=60, name="Wetterstation-am-Donaudampfschifffahrtsgesellschaftshaus " * 2)
    rows = [("desktop", "minute.html", {}), ("desktop-dark", "minute.html", {"dark": True}),
            ("phone", "minute.html", {"width": 390, "height": 780, "phone": True, "languages": "de"}),
            ("phone-dark", "minute.html", {"width": 390, "height": 780, "phone": True, "dark": True, "languages": "fr"}),
            ("narrow", "long.html", {"width": 320, "height": 640, "calm": True}),
            ("no-history", "none.html", {"width": 320, "height": 640})]
    for name, page, how in rows:
        stand.age(20)
        tab = Tab(stand.browser, **how)
        tab.go(stand.page(page))
        tab.wait(SHOWN)
        equal(tab.run("getComputedStyle(document.querySelector('details')).display !== 'none'"), page != "none.html")
        if page != "none.html":
            tab.run("document.querySelector('details').open = true")
            tab.wait("document.querySelectorAll('li img').length > 1")
        time.sleep(0.6)
        equal(tab.run(NARROW), True)
        findings(tab)
        tab.picture(output / f"{name}.png")
        if page == "long.html":
            tab.run("document.querySelector('li button').click()")
            tab.wait("document.querySelector('dialog').open")
            equal(tab.run(NARROW), True)
            # Dates that are nearer to each other than pictures can be are no dates of pictures.
            equal(tab.run("document.querySelector('#which').textContent"), "Earlier picture 1 of 2")
            findings(tab)
            tab.picture(output / "narrow-open.png")
        tab.close()


def contact_sheet():
    pictures = sorted(each for each in output.glob("*.png") if each.name != "sheet.png")
    width, height, columns = 420, 380, 4
    rows = (len(pictures) + columns - 1) // columns
    sheet = Image.new("RGB", (columns * width, rows * height), "#777")
    for place, file in enumerate(pictures):
        each = Image.open(file).convert("RGB")
        each.thumbnail((width - 10, height - 30))
        left, top = place % columns * width + 5, place // columns * height + 24
        sheet.paste(each, (left, top))
        ImageDraw.Draw(sheet).text((left, top - 18), file.stem, fill="white")
    sheet.save(output / "sheet.png")


def main():
    wanted = sys.argv[4:]
    before, after = [put_there, swaps_without_flicker, hidden_tab_rests, history_by_keyboard, without_script], [
        tells_the_age, tells_offline, faults_keep_the_picture, fits_everywhere]
    stand = Stand()
    try:
        for check in before + after:
            if wanted and check.__name__ not in wanted and check != put_there:
                continue
            if check in before[1:] and not stand.running:
                stand.publish()
                until((stand.cam / "pw.jpg").exists, 60, "a first picture")
            if check in after:
                if not (stand.cam / "pw.jpg").exists():
                    stand.publish()
                    until((stand.cam / "pw2.jpg").exists, 60, "two earlier pictures")
                stand.stop()
            start = time.monotonic()
            check(stand)
            print(f"ok {check.__name__} ({time.monotonic() - start:.1f} s)", flush=True)
    finally:
        stand.close()
    contact_sheet()


main()
