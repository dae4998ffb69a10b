# SPDX-License-Identifier: GPL-3.0-or-later
"""The pictures of docs/images: see scripts/screenshots."""
import os
import subprocess
import tempfile

from browser import Browser

TOP = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
IMAGES = os.path.join(TOP, "docs", "images")
PAGE = ["report", "--board", "boards/two_socket_2u.toml", "--profile", "default", "--profile", "kestrin", "--against", "default"]


def shoot(browser, name):
    browser.frame()
    with open(os.path.join(IMAGES, name), "wb") as file:
        file.write(browser.screenshot())
    print(f"docs/images/{name}: {os.path.getsize(os.path.join(IMAGES, name)) // 1024} KiB")


def main():
    os.makedirs(IMAGES, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "set.html")
        subprocess.run([os.environ["OXA_SENSORS"], *PAGE, "-o", path], cwd=TOP, check=True, stdout=subprocess.DEVNULL)
        browser = Browser(1280, 640)
        browser.media(prefers_color_scheme="light")
        browser.open(path, "#0/4")
        shoot(browser, "report-light.png")
        browser.media(prefers_color_scheme="dark")
        browser.open(path, "#1")
        browser.js("document.querySelector('th[data-key=uc] button').click()")
        shoot(browser, "report-dark.png")
        browser.media(prefers_color_scheme="light")
        browser.resize(320, 480, 2)
        browser.open(path, "#1")
        browser.key("/")
        browser.type("volts")
        browser.js("scrollTo(0, 0)")
        shoot(browser, "report-narrow.png")
        browser.close()


if __name__ == "__main__":
    main()
