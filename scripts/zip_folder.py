#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Packs a folder, whose name becomes the archive's top folder: zip_folder.py FOLDER ARCHIVE

The same files give the same bytes: names are sorted, times are SOURCE_DATE_EPOCH's, and neither owners nor
the machine's permissions are stored.
"""
import os
import sys
import time
import zipfile

folder, archive = sys.argv[1].rstrip("/"), sys.argv[2]
when = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
files = sorted(os.path.join(path, name) for path, _, names in os.walk(folder) for name in names)
with zipfile.ZipFile(archive, "w") as packed:
    for file in files:
        entry = zipfile.ZipInfo(os.path.relpath(file, os.path.dirname(folder)), when)
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.create_system = 3  # Unix, so that permissions mean what they say
        entry.external_attr = (0o100755 if file.endswith((".exe", ".dll")) else 0o100644) << 16
        with open(file, "rb") as content:
            packed.writestr(entry, content.read(), compresslevel=9)
