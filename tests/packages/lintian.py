"""Debian's looker-over of packages."""

import os
import subprocess


def said_by_lintian(*files):
    """What it has to say of packages; "" where there is nothing."""
    # Nobody has to be an ordinary user to look at files.
    done = subprocess.run(["lintian", "--pedantic", "--allow-root", "--fail-on", "error,warning,info,pedantic", *files],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=os.environ | {"LC_ALL": "C.UTF-8"})
    return done.stdout or (f"it ended with status {done.returncode}" if done.returncode else "")
