#!/usr/bin/env python3
"""Makes outline.bin, the world as the map page draws it without any tile server.

    make_outline.py LAND COUNTRIES LAKES CODES OUTPUT

LAND and COUNTRIES are land-50m.json and countries-50m.json of the npm package world-atlas, LAKES
is a text file with a corner "longitude latitude" a line and "NA NA" between rings (Natural Earth
1:50m lakes), CODES is iso_3166-1.json of Debian's package iso-codes. All coordinates come from
Natural Earth, which is in the public domain.

outline.bin: the numbers are variable-length (seven bits a byte, lowest first; signed ones
zigzag-coded), positions whole multiples of 1/256 degree.

    four sections: land rings, rings of lakes and inland seas, borders, countries
    the first three: count, then a line: count of points, then longitude and latitude of each as
        the difference to the point before, beginning with 0, 0
    countries: count, then for each two letters (ISO 3166-1), longitude, latitude, and its size as
        the square root of its area in square degrees on the Mercator plane
"""

import json
import math
import sys

UNITS = 256


def varint(out, value):
    while value > 127:
        out.append(value & 127 | 128)
        value >>= 7
    out.append(value)


def signed(out, value):
    varint(out, value << 1 if value >= 0 else (-value << 1) - 1)


def decoded_arcs(topology):
    (sx, sy), (tx, ty) = topology["transform"]["scale"], topology["transform"]["translate"]
    arcs = []
    for arc in topology["arcs"]:
        x = y = 0
        line = []
        for dx, dy in arc:
            x, y = x + dx, y + dy
            line.append((x * sx + tx, y * sy + ty))
        arcs.append(line)
    return arcs


def ring_points(ring, arcs):
    points = []
    for index in ring:
        line = arcs[index] if index >= 0 else arcs[~index][::-1]
        points.extend(line[1:] if points else line)
    return unrolled(points)


def unrolled(ring):
    """The ring with longitudes that go on beyond 180 degrees instead of jumping to the other side;
    one that goes around a pole is closed along the edge of the map."""
    points = [ring[0]]
    turn = 0
    for (before, _), (lon, lat) in zip(ring, ring[1:]):
        turn += 360 if lon - before < -180 else -360 if lon - before > 180 else 0
        points.append((lon + turn, lat))
    if turn:
        points += [(points[-1][0], -90.0), (points[0][0], -90.0)]
    return points


def polygons(geometry):
    if geometry["type"] == "Polygon":
        return [geometry["arcs"]]
    if geometry["type"] == "MultiPolygon":
        return geometry["arcs"]
    return []


def mercator(latitude):
    latitude = max(-85.0, min(85.0, latitude))
    return math.degrees(math.log(math.tan(math.pi / 4 + math.radians(latitude) / 2)))


def area_and_middle(points):
    area = x = y = 0.0
    plane = [(lon, mercator(lat)) for lon, lat in points]
    for (x0, y0), (x1, y1) in zip(plane, plane[1:] + plane[:1]):
        cross = x0 * y1 - x1 * y0
        area += cross
        x += (x0 + x1) * cross
        y += (y0 + y1) * cross
    if not area:
        return 0.0, points[0]
    latitude = math.degrees(2 * math.atan(math.exp(math.radians(y / (3 * area)))) - math.pi / 2)
    return abs(area) / 2, (x / (3 * area), latitude)


def contains(ring, point):
    inside = False
    x, y = point
    for (x0, y0), (x1, y1) in zip(ring, ring[1:] + ring[:1]):
        if (y0 > y) != (y1 > y) and x < (x1 - x0) * (y - y0) / (y1 - y0) + x0:
            inside = not inside
    return inside


def put_lines(out, lines):
    packed = []
    for line in lines:
        units = []
        for lon, lat in line:
            point = (round(lon * UNITS), round(lat * UNITS))
            if not units or point != units[-1]:
                units.append(point)
        if len(units) > 1:
            packed.append(units)
    varint(out, len(packed))
    for units in packed:
        varint(out, len(units))
        x = y = 0
        for px, py in units:
            signed(out, px - x)
            signed(out, py - y)
            x, y = px, py


def main():
    land_file, countries_file, lakes_file, codes_file, output = sys.argv[1:]
    land = json.load(open(land_file))
    countries = json.load(open(countries_file))
    letters = {row["numeric"]: row["alpha_2"] for row in json.load(open(codes_file))["3166-1"]}
    out = bytearray()

    arcs = decoded_arcs(land)
    rings = []
    waters = []
    for geometry in land["objects"]["land"]["geometries"]:
        for polygon in polygons(geometry):
            rings.append(ring_points(polygon[0], arcs))
            waters.extend(ring_points(ring, arcs) for ring in polygon[1:])
    put_lines(out, rings)

    lakes = [[]]
    for line in open(lakes_file):
        if line.startswith("NA"):
            lakes.append([])
        else:
            lakes[-1].append(tuple(map(float, line.split())))
    # Islands in lakes are too small to be worth a third kind of ring.
    waters.extend(lake for lake in lakes if lake and not any(
        other is not lake and contains(other, lake[0]) for other in lakes))
    put_lines(out, waters)

    # A border is an arc that two countries share.
    arcs = decoded_arcs(countries)
    owners = {}
    labels = []
    for number, geometry in enumerate(countries["objects"]["countries"]["geometries"]):
        largest = (0.0, None)
        for polygon in polygons(geometry):
            for ring in polygon:
                for index in ring:
                    owners.setdefault(index if index >= 0 else ~index, set()).add(number)
            largest = max(largest, area_and_middle(ring_points(polygon[0], arcs)))
        code = letters.get(geometry.get("id"))
        if code and largest[1]:
            lon, lat = largest[1]
            labels.append((largest[0], code, ((lon + 180) % 360 - 180, lat)))
    put_lines(out, [arcs[index] for index, users in sorted(owners.items()) if len(users) > 1])

    labels.sort(reverse=True)
    varint(out, len(labels))
    for area, code, (lon, lat) in labels:
        out.extend(code.encode())
        signed(out, round(lon * UNITS))
        signed(out, round(lat * UNITS))
        varint(out, round(math.sqrt(area)))
    open(output, "wb").write(out)
    print(len(out), "bytes,", len(rings), "rings,", len(waters), "lakes,", len(labels), "countries")


main()
