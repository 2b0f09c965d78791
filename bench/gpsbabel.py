"""The other converter that we measure beside, and what our formats are called there."""

import dataclasses
import shutil
import subprocess


@dataclasses.dataclass
class Peer:
    """One format by our key and by the name there, with the kind of data that it holds there."""

    key: str
    name: str
    kind: str

    @property
    def extension(self):
        return self.key.split(":")[0]


PEERS = [
    Peer("itn", "tomtom_itn", "rte"),
    Peer("ov2", "tomtom", "wpt"),
    Peer("gpx:107", "gpx", "rte"),
    Peer("kml", "kml", "wpt"),
    Peer("gdb", "gdb", "rte"),
    Peer("rte:149", "ozi", "rte"),
    Peer("plt:301", "ozi", "trk"),
    Peer("wpt:325", "ozi", "wpt"),
    Peer("osm", "osm", "rte"),
    Peer("bcr", "bcr", "rte"),
    Peer("csv", "unicsv", "wpt"),
    Peer("dat", "destinator_itn", "rte"),
    Peer("lmx", "lmx", "wpt"),
    Peer("loc", "geo", "wpt"),
    Peer("tk", "kompass_tk", "trk"),
    Peer("upoi:294", "igo2008_poi", "wpt"),
    Peer("xml:319", "mapfactor", "wpt"),
]


def is_installed():
    return shutil.which("gpsbabel") is not None


def version():
    said = subprocess.run(["gpsbabel", "-V"], capture_output=True, text=True).stdout.split()
    return " ".join(said[1:3])


def abilities():
    """By format name, what gpsbabel says of it: reading and writing of waypoints, tracks, routes."""
    listed = subprocess.run(["gpsbabel", "-^3"], capture_output=True, text=True).stdout
    fields = [line.split("\t") for line in listed.splitlines()]
    return {line[2]: line[1] for line in fields if len(line) > 2 and line[0] in
            ("file", "internal")}


def convert(source_peer, source, target_peer, target):
    """The command that converts one file."""
    command = ["gpsbabel"]
    flags = {"wpt": "-w", "rte": "-r", "trk": "-t"}
    command += sorted({flags[source_peer.kind], flags[target_peer.kind]})
    command += ["-i", source_peer.name, "-f", str(source)]
    if source_peer.kind != target_peer.kind:
        command += ["-x", f"transform,{target_peer.kind}={source_peer.kind},del"]
    return command + ["-o", target_peer.name, "-F", str(target)]
