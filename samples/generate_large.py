#!/usr/bin/env python3
"""Writes samples/knowledge-atlas.mindmap, a map of a few thousand topics, to standard output.

    samples/generate_large.py > samples/knowledge-atlas.mindmap

The output is the same on every run. Topics are in rings around their parents, each subtree in a circle of its own.
"""

import json
import math
import sys
import uuid

NAMESPACE = uuid.UUID("8d0f5c1e-6f0b-4f0e-9b57-2f3d3b1f7a40")

ASPECTS = ["Origins", "Key ideas", "Methods", "Instruments", "People", "Open questions", "In daily life", "Mistakes",
           "Exercises", "Reading"]

ATLAS = {
    "Mathematics": ("square", {
        "Algebra": ["Groups", "Rings", "Fields", "Linear maps", "Polynomials"],
        "Analysis": ["Limits", "Derivatives", "Integrals", "Series", "Measure"],
        "Geometry": ["Triangles", "Curves", "Surfaces", "Symmetry", "Projection"],
        "Number theory": ["Primes", "Congruences", "Partitions", "Continued fractions", "Ciphers"],
        "Probability": ["Chance", "Distributions", "Estimation", "Random walks", "Queues"],
        "Combinatorics": ["Counting", "Graphs", "Matchings", "Designs", "Games"],
    }),
    "Physics": ("bolt", {
        "Mechanics": ["Motion", "Forces", "Energy", "Rotation", "Vibration"],
        "Electricity": ["Charge", "Currents", "Magnets", "Waves", "Circuits"],
        "Heat": ["Temperature", "Gases", "Engines", "Entropy", "Phase changes"],
        "Light": ["Lenses", "Colour", "Interference", "Lasers", "Spectra"],
        "Matter": ["Atoms", "Nuclei", "Particles", "Crystals", "Plasma"],
        "Space and time": ["Gravity", "Clocks", "Black holes", "Expansion", "Cosmic background"],
    }),
    "Life": ("leaf", {
        "Cells": ["Membranes", "Energy supply", "Division", "Signals", "Transport"],
        "Heredity": ["Genes", "Chromosomes", "Mutations", "Families", "Editing"],
        "Plants": ["Roots", "Leaves", "Flowers", "Seeds", "Fungal partners"],
        "Animals": ["Insects", "Fish", "Birds", "Mammals", "Behaviour"],
        "Ecology": ["Food webs", "Forests", "Oceans", "Invasions", "Restoration"],
        "Evolution": ["Selection", "Species", "Fossils", "Islands", "Cooperation"],
    }),
    "Earth": ("globe", {
        "Rocks": ["Minerals", "Volcanoes", "Sediments", "Metamorphism", "Ores"],
        "Water": ["Rivers", "Groundwater", "Glaciers", "Tides", "Currents of the sea"],
        "Air": ["Winds", "Clouds", "Storms", "Seasons", "Forecasts"],
        "Maps": ["Projections", "Surveying", "Satellites", "Scales", "Place names"],
        "Deep time": ["Plates", "Ice ages", "Extinctions", "Strata", "Dating"],
        "Soil": ["Horizons", "Nutrients", "Erosion", "Compost", "Drainage"],
    }),
    "Society": ("person.3", {
        "Law": ["Contracts", "Property", "Courts", "Rights", "Treaties"],
        "Economy": ["Prices", "Labour", "Money", "Trade", "Taxes"],
        "Politics": ["Elections", "Parliaments", "Parties", "Federations", "Protest"],
        "Cities": ["Streets", "Housing", "Transport", "Parks", "Waste"],
        "Education": ["Schools", "Universities", "Apprenticeship", "Libraries", "Examinations"],
        "Media": ["Newspapers", "Radio", "Television", "Archives", "Rumours"],
    }),
    "Arts": ("paintpalette", {
        "Painting": ["Pigments", "Portraits", "Landscapes", "Murals", "Conservation"],
        "Music": ["Rhythm", "Harmony", "Instruments of the orchestra", "Song", "Notation"],
        "Theatre": ["Stages", "Masks", "Comedy", "Tragedy", "Lighting"],
        "Writing": ["Novels", "Poems", "Essays", "Translation", "Editing of texts"],
        "Architecture": ["Arches", "Timber", "Glass", "Gardens", "Temples"],
        "Film": ["Cameras", "Cutting", "Sound", "Animation", "Documentary"],
    }),
    "Technology": ("gear", {
        "Computing": ["Algorithms", "Languages", "Networks", "Databases", "Interfaces"],
        "Materials": ["Steel", "Concrete", "Polymers", "Ceramics", "Textiles"],
        "Energy supply": ["Sun", "Wind", "Water power", "Batteries", "Grids"],
        "Machines": ["Gears", "Pumps", "Turbines", "Robots", "Bearings"],
        "Measurement": ["Length", "Mass", "Time", "Pressure", "Calibration"],
        "Travel": ["Bicycles", "Railways", "Ships", "Aircraft", "Rockets"],
    }),
    "Mind and health": ("heart", {
        "Body": ["Bones", "Blood", "Breathing", "Digestion", "Senses"],
        "Medicine": ["Diagnosis", "Surgery", "Vaccines", "Nursing", "Pharmacy"],
        "Psychology": ["Memory", "Attention", "Learning", "Emotion", "Sleep"],
        "Philosophy": ["Logic", "Ethics", "Knowledge", "Beauty", "Free will"],
        "Food": ["Grains", "Fermentation", "Vegetables", "Cooking", "Preserving"],
        "Language": ["Sounds", "Words", "Grammar", "Dialects", "Scripts"],
    }),
}

# Fill, stroke and text by depth below a field.
PALETTES = [
    [("#1565C0", "#0D47A1", "#FFFFFF"), ("#1E88E5", "#1565C0", "#FFFFFF"), ("#64B5F6", "#1E88E5", "#0D2F4F"),
     ("#BBDEFB", "#64B5F6", "#0D2F4F")],
    [("#2E7D32", "#1B5E20", "#FFFFFF"), ("#43A047", "#2E7D32", "#FFFFFF"), ("#81C784", "#43A047", "#1B3A1B"),
     ("#C8E6C9", "#81C784", "#1B3A1B")],
    [("#EF6C00", "#E65100", "#FFFFFF"), ("#FB8C00", "#EF6C00", "#FFFFFF"), ("#FFB74D", "#FB8C00", "#4A2800"),
     ("#FFE0B2", "#FFB74D", "#4A2800")],
    [("#7B1FA2", "#4A148C", "#FFFFFF"), ("#8E24AA", "#7B1FA2", "#FFFFFF"), ("#BA68C8", "#8E24AA", "#3A0F4A"),
     ("#E1BEE7", "#BA68C8", "#3A0F4A")],
    [("#C62828", "#8E0000", "#FFFFFF"), ("#E53935", "#C62828", "#FFFFFF"), ("#EF5350", "#E53935", "#4A0000"),
     ("#FFCDD2", "#EF5350", "#4A0000")],
    [("#00796B", "#004D40", "#FFFFFF"), ("#00897B", "#00796B", "#FFFFFF"), ("#4DB6AC", "#00897B", "#003833"),
     ("#B2DFDB", "#4DB6AC", "#003833")],
    [("#C2185B", "#880E4F", "#FFFFFF"), ("#D81B60", "#C2185B", "#FFFFFF"), ("#F06292", "#D81B60", "#4A0028"),
     ("#F8BBD0", "#F06292", "#4A0028")],
    [("#F57F17", "#E65100", "#FFFFFF"), ("#F9A825", "#F57F17", "#3A2800"), ("#FDD835", "#F9A825", "#3A2800"),
     ("#FFF59D", "#FDD835", "#3A2800")],
]
ROOT_COLORS = ("#37474F", "#263238", "#FFFFFF")

LEAF_RADIUS = 62.0  # room for one short title
BADGES = ["p1", "p2", "p3", "done", "in-progress", "blocked"]


class Topic:
    def __init__(self, title, children=(), icon=None):
        self.title = title
        self.children = list(children)
        self.icon = icon
        self.radius = LEAF_RADIUS
        self.ring = 0.0

    def measure(self):
        """Sets the distance of the children and the radius of the circle around the subtree."""
        if not self.children:
            return
        for child in self.children:
            child.measure()
        widest = max(child.radius for child in self.children)
        self.ring = max(widest / math.sin(math.pi / max(len(self.children), 2)), widest + 110.0)
        self.radius = self.ring + widest


def atlas():
    fields = []
    for field, (icon, disciplines) in ATLAS.items():
        fields.append(Topic(field, [
            Topic(discipline, [Topic(subject, [Topic(aspect) for aspect in ASPECTS]) for subject in subjects])
            for discipline, subjects in disciplines.items()], icon))
    return Topic("Atlas of Knowledge", fields)


class MapWriter:
    def __init__(self):
        self.nodes = []
        self.edges = []

    def add(self, topic, path, position, direction, palette, depth):
        colors = ROOT_COLORS if depth == 0 else palette[min(depth - 1, len(palette) - 1)]
        node_id = identify("topic", path)
        number = len(self.nodes)
        self.nodes.append(node(topic, node_id, position, colors, depth, number))
        count = len(topic.children)
        for index, child in enumerate(topic.children):
            angle = direction + 2 * math.pi * (index + 0.5) / count
            place = (position[0] + topic.ring * math.cos(angle), position[1] + topic.ring * math.sin(angle))
            branch = PALETTES[index % len(PALETTES)] if depth == 0 else palette
            child_path = path + (child.title,)
            child_id, stroke = self.add(child, child_path, place, angle + math.pi, branch, depth + 1)
            self.edges.append(edge(identify("edge", child_path), node_id, child_id, stroke))
        return node_id, colors[1]


def identify(kind, path):
    return str(uuid.uuid5(NAMESPACE, kind + "/" + "/".join(path))).upper()


def node(topic, node_id, position, colors, depth, number):
    record = {
        "id": node_id,
        "title": topic.title,
        "notes": "",
        "position": [round(position[0]), round(position[1])],
        "style": {"fill": colors[0], "stroke": colors[1], "textColor": colors[2], "shape": "rounded-rect",
                  "iconSize": 16, "bold": False, "italic": False},
    }
    if topic.icon:
        record["icon"] = {"type": "sf-symbol", "value": topic.icon}
    if depth == 0:
        record["emoji"] = "🗺️"
    if depth == 4 and number % 17 == 0:
        record["badge"] = BADGES[number % len(BADGES)]
    return record


def edge(edge_id, source, target, color):
    return {"id": edge_id, "from": source, "to": target, "label": "",
            "style": {"color": color, "dashed": False, "arrowHead": "none",
                      "taper": {"startWidth": 6, "endWidth": 2, "easing": "quadraticIn"}}}


def link(source, target):
    return {"id": identify("link", source + target), "from": identify("topic", source),
            "to": identify("topic", target), "label": "", "color": "#888888"}


def document():
    root = atlas()
    root.measure()
    writer = MapWriter()
    writer.add(root, (root.title,), (0.0, 0.0), -math.pi / 2, PALETTES[0], 0)
    top = (root.title,)
    links = [
        link(top + ("Mathematics", "Number theory", "Ciphers"), top + ("Technology", "Computing", "Algorithms")),
        link(top + ("Physics", "Light", "Lenses"), top + ("Arts", "Film", "Cameras")),
        link(top + ("Life", "Plants", "Seeds"), top + ("Mind and health", "Food", "Grains")),
        link(top + ("Earth", "Air", "Winds"), top + ("Technology", "Energy supply", "Wind")),
    ]
    return {
        "version": 1,
        "title": "Atlas of Knowledge",
        "createdAt": "2026-02-01T08:00:00Z",
        "updatedAt": "2026-02-01T08:00:00Z",
        "layout": "manual",
        "canvas": {"background": "#FAFAFA", "grid": False, "snap": True, "themeId": "mono"},
        "hierarchical": {"edgeSizing": True, "rootEdgeWidth": 15, "leafEdgeWidth": 5, "nodeSizing": True,
                         "rootFontSize": 40, "leafFontSize": 13, "rootPadding": 28, "leafPadding": 8,
                         "decayFunction": "linear"},
        "relationships": links,
        "regions": [],
        "edges": writer.edges,
        "nodes": writer.nodes,
    }


def write(record, out):
    """Writes each record of an array on one line, so that the file is small and diffs are readable."""
    def text(value):
        return json.dumps(value, ensure_ascii=False, sort_keys=True, separators=(",", ":"))

    lines = []
    for key in sorted(record):
        value = record[key]
        if isinstance(value, list) and value:
            lines.append(text(key) + ":[\n" + ",\n".join(map(text, value)) + "]")
        else:
            lines.append(text(key) + ":" + text(value))
    out.write("{" + ",\n".join(lines) + "}\n")


if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8")
    write(document(), sys.stdout)
