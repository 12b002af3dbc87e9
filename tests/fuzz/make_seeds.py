#!/usr/bin/env python3
"""Writes the hand-made seed inputs of the fuzz targets into corpus/<target>/.

Each seed is spelled with the same byte layout that FuzzDecoders.h reads, so that it starts the
fuzzer on a path worth having (a cycle, a duplicate id, a root under the wrong key, a payload of the
wrong type, a sheet that begins with the relative skin path ...). Run it again after a change of the
decoders; files found by fuzzing (named by their hash) are left alone.
"""

import json
import os
import struct
import sys

HERE = os.path.dirname(os.path.abspath(__file__))

BASE_IDS = ["r", "a", "b", "c", "d", "e", "f", "g", "", "R", "r ", "x"]
DEV_TREE_IDS = ["custom_root_id", "resource_root_id", "favorite_root_id", "passengerflow_root_id",
                "h1", "h2", "c1", "c2", "c3", "g1", "", "x"]
DEV_IDS = ["d1", "d2", "d3", "h1", "c1", "", "custom_root_id"]
NODE_TYPES = [0, 2, 3, 4, 5, 6, 12, 13, 17]
BIND_TYPES = [-1, 0, 1, 2, 3, 4, 9]
STATUS_KEYS = ["c1", "c2", "c3", "c4", "c5", "c6", "h1", "a1", "u1", "", "zz", "C1"]


def choice(table, value):
    """Choice(): an index into the table, or the free-text escape with a Latin-1 text."""
    if value in table:
        return bytes([table.index(value)])
    data = value.encode("latin-1")
    assert len(data) <= 6
    return bytes([len(table), 0, len(data)]) + data


def text(value, max_len):
    data = value.encode("latin-1")
    assert len(data) <= max_len
    return bytes([0, len(data)]) + data


def odd_int(value):
    named = {-2**31: 1, 2**31 - 1: 2, 99: 3, -1: 4, 0: 5}
    if value in named:
        return bytes([named[value]])
    return bytes([7]) + struct.pack("<i", value)


# ---- base tree --------------------------------------------------------------------------------

def tree_item(item_id, parent, sort=None, flags=None, text_value=None, icon=None, buttons=0):
    mode = 0
    tail = b""
    if sort is not None:
        mode |= 0x01
        tail += odd_int(sort)
    if flags is not None:
        mode |= 0x02
        table = [0, 0x21, 0x61, 0x71, 0x7f, 0x01, 0x20]
        tail += bytes([table.index(flags)]) if flags in table else bytes([7]) + struct.pack("<i", flags)
    if text_value is not None:
        mode |= 0x04
        tail += text(text_value, 12)
    if icon is not None:
        mode |= 0x08
        tail += bytes([[":/missing.png", "/", "", "no/such/file.png"].index(icon)])
    if buttons:
        mode |= 0x20
        tail += bytes([buttons - 1])
        for i in range(buttons):
            tail += bytes([i % 3]) + text("b%d" % i, 3) + bytes([i & 1, 1])
    return choice(BASE_IDS, item_id) + choice(BASE_IDS, parent) + bytes([mode]) + tail


def base_tree(records, root="r", check=False, drag=False, show_root=False, hover=False, elide=None, ops=b""):
    header = (0x01 if check else 0) | (0x02 if drag else 0) | (0x10 if hover else 0) | (0x40 if show_root else 0)
    body = b""
    if elide is not None:
        header |= 0x80
        body += bytes([1, elide - 1])
    body += choice(BASE_IDS, root) + bytes([len(records)])
    for key_mode, item, key in records:
        body += bytes([key_mode]) + item
        if key_mode == 3:
            body += choice(BASE_IDS, key)
    return bytes([header]) + body + ops


def op(item_id, code, args=b""):
    return choice(BASE_IDS, item_id) + bytes([code]) + args


BASE_QUERIES = (op("a", 0) + op("r", 1, text("A", 4)) + op("r", 2, b"\x01") + op("b", 3) + op("a", 4, b"\x01")
                + op("a", 5, b"\x01" + text("b", 3)) + op("a", 6, b"\x02") + op("a", 7, b"\x01" + text("c", 4)))


def base_tree_seeds():
    simple = [(0, tree_item("r", ""), None), (0, tree_item("a", "r", sort=5, text_value="Alpha"), None),
              (0, tree_item("b", "r", sort=3, text_value="Beta"), None),
              (0, tree_item("c", "a", text_value="Gamma"), None)]
    yield "simple_tree", base_tree(simple, ops=BASE_QUERIES)
    yield "simple_tree_show_root", base_tree(simple, show_root=True, check=True, ops=BASE_QUERIES + op("c", 10, b"\x02\x01"))
    yield "cycle_through_root", base_tree([(0, tree_item("r", "b"), None), (0, tree_item("a", "r"), None),
                                           (0, tree_item("b", "a"), None)], show_root=True, ops=BASE_QUERIES)
    yield "self_parent", base_tree([(0, tree_item("r", ""), None), (0, tree_item("a", "a"), None),
                                    (0, tree_item("b", "r"), None), (3, tree_item("r", "r"), "R")], ops=BASE_QUERIES)
    yield "missing_parent", base_tree([(0, tree_item("r", ""), None), (0, tree_item("a", "x"), None),
                                       (0, tree_item("b", "r"), None)], ops=BASE_QUERIES)
    # The same id under other keys: the child "b" of "a" is built once below each copy of "a".
    yield "duplicate_ids", base_tree([(0, tree_item("r", ""), None), (2, tree_item("a", "r", sort=1), None),
                                      (2, tree_item("a", "r", sort=2), None), (0, tree_item("b", "a"), None)],
                                     ops=BASE_QUERIES + op("a", 8) + op("b", 0))
    yield "odd_sort_numbers", base_tree([(0, tree_item("r", ""), None),
                                         (0, tree_item("a", "r", sort=2**31 - 1), None),
                                         (0, tree_item("b", "r", sort=-2**31), None),
                                         (0, tree_item("c", "r", sort=-1), None),
                                         (0, tree_item("d", "r", sort=99), None),
                                         (0, tree_item("e", "r", sort=123456789), None)],
                                        ops=op("b", 9, choice(BASE_IDS, "a") + b"\x01") + op("a", 9, choice(BASE_IDS, "e") + b"\x00"))
    yield "empty_ids", base_tree([(0, tree_item("r", ""), None), (0, tree_item("", "r"), None),
                                  (3, tree_item("a", ""), "")], ops=op("", 0) + op("", 2, b"\x01") + op("", 12) + tree_item("", "r"))
    yield "root_record_without_id", base_tree([(3, tree_item("", ""), "r"), (0, tree_item("a", "r"), None)])
    yield "root_key_missing", base_tree([(0, tree_item("a", ""), None)], root="r")
    yield "flags_and_check", base_tree([(0, tree_item("r", ""), None), (0, tree_item("a", "r", flags=0x21), None),
                                        (0, tree_item("b", "r", flags=0x71), None),
                                        (0, tree_item("c", "b", flags=-1), None)], check=True, show_root=True,
                                       ops=op("b", 10, b"\x02\x01") + op("a", 10, b"\x02\x01") + op("r", 4, b"\x01"))
    yield "elided_text_buttons", base_tree([(0, tree_item("r", ""), None),
                                            (0, tree_item("a", "r", text_value="long caption", icon="/", buttons=2), None),
                                            (0, tree_item("b", "a", text_value="x" * 12, buttons=1), None)],
                                           elide=30, hover=True, show_root=True,
                                           ops=op("r", 1, text("LONG", 4)) + op("a", 13, tree_item("a", "r", buttons=1) + text("/", 4) + b"\x01"))
    yield "edit_then_rebuild", base_tree(simple, drag=True, ops=op("a", 8) + op("r", 12) + tree_item("d", "b")
                                         + op("r", 15, b"\x00") + op("c", 11, b"\x01") + op("r", 15, b"\x01") + BASE_QUERIES)


# ---- device tree ------------------------------------------------------------------------------

def node(tree_id, parent, dev_id, dev_parent, node_type, name=None, status=None, bind=None, sort=None,
         channel=None, invalid=False):
    out = choice(DEV_TREE_IDS, tree_id) + choice(DEV_TREE_IDS, parent) + choice(DEV_IDS, dev_id) + choice(DEV_IDS, dev_parent)
    out += bytes([NODE_TYPES.index(node_type)]) if node_type in NODE_TYPES else bytes([9]) + odd_int(node_type)
    mode = 0x80 if invalid else 0
    tail = b""
    if name is not None:
        mode |= 0x01
        tail += text(name, 10)
    if status is not None:
        mode |= 0x02
        tail += bytes([0, status]) if status in (0, 1, 2) else bytes([3]) + odd_int(status)
    if bind is not None:
        mode |= 0x04
        tail += bytes([BIND_TYPES.index(bind)]) if bind in BIND_TYPES else bytes([7]) + odd_int(bind)
    if sort is not None:
        mode |= 0x08
        tail += odd_int(sort)
    if channel is not None:
        mode |= 0x10
        tail += odd_int(channel)
    return out + bytes([mode]) + tail


def device_tree(tree_type, nodes, root_name=None, node_types=None, bind_types=None, button_type=None, ops=b""):
    options = 0
    body = b""
    if root_name is not None:
        options |= 0x01
        body += text(root_name, 8)
    if node_types is not None:
        options |= 0x02
        body += bytes([len(node_types)]) + b"".join(bytes([NODE_TYPES.index(t)]) for t in node_types)
    if bind_types is not None:
        options |= 0x04
        body += bytes([len(bind_types)]) + b"".join(bytes([BIND_TYPES.index(t)]) for t in bind_types)
    if button_type is not None:
        options |= 0x08
        body += bytes([0]) + text("P", 3) + bytes([1, NODE_TYPES.index(button_type)])
    body += bytes([len(nodes)])
    for key, item in nodes:
        body += (bytes([1]) + item) if key is None else (bytes([0]) + item + choice(DEV_TREE_IDS, key))
    return bytes([tree_type, options]) + body + ops


def dop(tree_id, dev_id, code, args=b""):
    return choice(DEV_TREE_IDS, tree_id) + choice(DEV_IDS, dev_id) + bytes([code]) + args


DEVICE_QUERIES = (dop("h1", "d1", 0) + dop("custom_root_id", "d1", 1, b"\x01") + dop("c1", "c1", 2)
                  + dop("h1", "c1", 3) + dop("c1", "d2", 4) + dop("h1", "d1", 5, b"\x01\x00") + dop("c1", "d2", 6, b"\x02\x01")
                  + dop("c2", "c1", 9, text("cam", 4)) + dop("c1", "d1", 10, b"\x01") + dop("x", "d1", 11, b"\x01"))


def resource_nodes():
    return [(None, node("resource_root_id", "", "d3", "", 2, name="All")),
            (None, node("h1", "resource_root_id", "h1", "d3", 3, name="Host", status=1)),
            (None, node("c1", "h1", "c1", "h1", 4, name="Cam 1", status=0, channel=1)),
            (None, node("c2", "h1", "d1", "h1", 4, name="Cam 2", status=2, bind=2, channel=2)),
            (None, node("c3", "h1", "d2", "h1", 5, name="Alarm")),
            (None, node("g1", "resource_root_id", "d2", "d3", 12, name="Decoder")),
            (None, node("x", "g1", "d1", "d2", 13, name="Out", channel=-1))]


def device_tree_seeds():
    custom = [(None, node("g1", "custom_root_id", "d1", "custom_root_id", 2, name="Group")),
              (None, node("c1", "g1", "c1", "d1", 4, name="Cam", status=1, channel=3)),
              (None, node("c2", "g1", "c1", "d1", 4, name="Same dev", bind=3)),
              (None, node("c3", "custom_root_id", "d2", "", 4, name="Top cam", bind=4, status=0))]
    yield "generic_empty_map_root_name", device_tree(0, [], root_name="Root")
    yield "custom_tree", device_tree(2, custom, root_name="Custom", ops=DEVICE_QUERIES)
    yield "custom_tree_host_filtered", device_tree(2, custom + [(None, node("h1", "custom_root_id", "h1", "", 3))],
                                                   root_name="C", ops=DEVICE_QUERIES)
    yield "resource_tree", device_tree(1, resource_nodes(), button_type=4, ops=DEVICE_QUERIES + dop("c1", "d1", 7) + DEVICE_QUERIES)
    yield "resource_tree_no_root", device_tree(1, resource_nodes()[1:], root_name="R")
    yield "resource_tree_empty", device_tree(1, [], root_name="R", ops=DEVICE_QUERIES)
    yield "resource_tree_wide_sets", device_tree(1, resource_nodes(), node_types=[2, 3, 4], bind_types=[-1, 9],
                                                 ops=DEVICE_QUERIES)
    yield "favorite_tree", device_tree(3, [(None, node("c1", "favorite_root_id", "c1", "", 4, status=1)),
                                           (None, node("c2", "favorite_root_id", "c1", "", 4, status=0))],
                                       root_name="Fav", ops=DEVICE_QUERIES)
    yield "passenger_flow_root_replaced", device_tree(4, [(None, node("passengerflow_root_id", "", "d1", "", 4, name="mine")),
                                                          (None, node("c1", "passengerflow_root_id", "c1", "", 4))],
                                                      root_name="Flow", ops=DEVICE_QUERIES)
    yield "node_under_other_key", device_tree(2, [("x", node("c1", "custom_root_id", "c1", "", 4)),
                                                  ("c2", node("c1", "custom_root_id", "d1", "", 4))], ops=DEVICE_QUERIES)
    yield "cycle_and_self_parent", device_tree(0, [(None, node("g1", "c1", "d1", "", 2)), (None, node("c1", "g1", "c1", "", 4)),
                                                   (None, node("c2", "c2", "d2", "", 4)),
                                                   (None, node("custom_root_id", "c1", "custom_root_id", "", 2))],
                                               ops=DEVICE_QUERIES)
    yield "odd_numbers", device_tree(2, [(None, node("c1", "custom_root_id", "c1", "", 4, status=-2**31, bind=2**31 - 1,
                                                     sort=-2**31, channel=2**31 - 1)),
                                         (None, node("c2", "custom_root_id", "", "", -7, status=7, bind=-5, invalid=True))],
                                     ops=DEVICE_QUERIES + dop("c1", "c1", 8) + node("c1", "custom_root_id", "c1", "", 3))


# ---- channel-state batches --------------------------------------------------------------------

def status_map(entries):
    out = bytes([0, len(entries)])
    for key, image, status in entries:
        out += choice(STATUS_KEYS, key) + bytes([1 if image else 0])
        out += bytes([1, status]) if status in (0, 1, 2) else bytes([0]) + odd_int(status)
    return out


def no_host_op():
    return bytes([0])


def status_batch_seeds():
    every = [("c%d" % i, i % 2 == 0, i % 3) for i in range(1, 7)] + [("h1", False, 1), ("u1", True, 0),
                                                                      ("a1", False, 1)]
    yield "resource_all_channels", bytes([0]) + status_map(every) + no_host_op()
    yield "custom_all_channels", bytes([1]) + status_map(every) + no_host_op()
    yield "image_flag_on_then_off", (bytes([0]) + status_map([("c1", True, 1), ("c2", True, 0), ("c4", True, 1)])
                                     + no_host_op() + status_map([("c1", False, 0), ("c2", False, 1), ("c6", False, 1)])
                                     + no_host_op())
    yield "odd_status_values", bytes([0]) + status_map([("c1", False, -1), ("c2", True, 2**31 - 1), ("c3", False, -2**31),
                                                        ("zz", True, 1), ("", False, 1), ("C1", True, 0)]) + no_host_op()
    yield "host_commands", (bytes([0]) + status_map([("c1", False, 1)]) + bytes([1]) + choice(STATUS_KEYS, "h1") + bytes([0])
                            + status_map([]) + bytes([1]) + choice(STATUS_KEYS, "h1") + bytes([1])
                            + status_map([]) + bytes([2]) + choice(STATUS_KEYS, "c1") + odd_int(4))
    yield "wrong_types", (bytes([0]) + bytes([2]) + odd_int(7) + no_host_op() + bytes([3]) + text("c1", 8) + no_host_op()
                          + bytes([4]) + no_host_op() + bytes([5]) + choice(STATUS_KEYS, "c1") + odd_int(1) + no_host_op())
    yield "pair_and_bytes", (bytes([1]) + bytes([6, 1]) + odd_int(1) + no_host_op() + bytes([7, 3, 0x63, 0x2c, 0x31, 1])
                             + no_host_op())
    # Nested containers: a map of lists of maps, and pairs inside a QVariantMap.
    yield "nested_containers", (bytes([0]) + bytes([8, 2]) + choice(STATUS_KEYS, "c1") + bytes([9, 2]) + status_map([("c1", True, 1)])
                                + bytes([4]) + choice(STATUS_KEYS, "c2") + bytes([10]) + choice(STATUS_KEYS, "c2") + bytes([1])
                                + no_host_op() + bytes([10]) + choice(STATUS_KEYS, "c3") + bytes([0]) + no_host_op())


# ---- style sheets -----------------------------------------------------------------------------

def stylesheet_seeds():
    rel = b"./resource/skin/"
    yield "plain_sheet", b"\x00QTreeWidget { background: #202020; color: white; }\n"
    yield "relative_path_inside", b"\x00QTreeWidget::branch { image: url(" + rel + b"dark/Common/a.png); }\n" \
                                  b"QToolButton { image: url(" + rel + b"b.png); }"
    yield "relative_path_at_start", b"\x00" + rel + b"x.png QTreeWidget { image: url(" + rel + b"y.png); }"
    yield "nul_in_middle", b"\x00QWidget { color: red; }\x00" + rel + b"after.png"
    yield "common_and_module", b"\x05#dragBgBtn { border: 1px solid " + b"#fff; }\nQTreeView::item:hover { }"
    yield "named_file_full_style", b"\x06QScrollBar:vertical { width: 8px; }"
    yield "high_bytes", b"\x04QLabel { font-family: \"\xe9\xff\xfe\"; }" + rel
    yield "broken_css", b"\x01QTreeWidget { { } } ;;; @import url(" + rel + b"); } \\"
    yield "empty", b""


def view_state(current, top, expanded, version=1):
    """A view state as CLS_DeviceTreeViewState::Encode writes it (docs/view-state-format.md)."""
    def string(value):
        data = value.encode("utf-8")
        return struct.pack(">I", len(data)) + data
    out = b"WTVS" + bytes([version]) + struct.pack(">I", len(expanded)) + string(current) + string(top)
    for item in sorted(expanded):
        out += string(item)
    return out


def view_state_seeds():
    whole = view_state("g2c1", "g1", ["custom_root_id", "g2", "g3"])
    return [
        ("whole", whole),
        ("empty_state", view_state("", "", [])),
        ("unknown_ids", view_state("gone", "also gone", ["g9", "", "custom_root_id"])),
        ("root_folded", view_state("g0c0", "g0c0", ["g0"])),
        ("non_ascii", view_state("\u5317\u95e8", "", ["\u00fc"])),
        ("truncated", whole[:-3]),
        ("trailing_byte", whole + b"x"),
        ("next_version", view_state("g2c1", "", ["g2"], version=2)),
        ("count_beyond_bytes", whole[:5] + struct.pack(">I", 1 << 30) + whole[9:]),
    ]


def drag_nodes(nodes):
    """The nodes format of a drag payload as CLS_DeviceTreeDragData::Encode writes it
    (docs/drag-payload-format.md): compact UTF-8 JSON, one object of five keys a node."""
    return json.dumps([{"channelNo": channel, "devId": dev_id, "name": name, "treeId": tree_id, "type": node_type}
                       for tree_id, dev_id, node_type, name, channel in nodes],
                      ensure_ascii=False, separators=(",", ":")).encode("utf-8")


def drag_data_seeds():
    whole = drag_nodes([("g1c0", "D1", 4, "Nord", 1), ("g1", "", 2, "Gruppe", -1), ("h7", "H7", 3, "Host 7", 0)])
    return [
        ("whole", whole),
        ("empty_array", b"[]"),
        ("non_ascii", drag_nodes([("c1", "d\u00e9v", 4, "\u5317\u95e8\u6444\u50cf\u673a", 2147483647),
                                  ("c2", "D2", 13, "T\u00fcr \u00d6stfl\u00fcgel", -2147483648),
                                  ("c3", "D3", 17, "Kamera \U0001f4f7", 0)])),
        ("missing_key", b'[{"treeId":"a","devId":"A","type":4,"channelNo":1}]'),
        ("non_object_element", whole[:-1] + b',7]'),
        ("wrong_type", b'[{"treeId":5,"devId":"A","type":"4","name":"Alpha","channelNo":1.5}]'),
        ("out_of_range", b'[{"treeId":"a","devId":"A","type":4,"name":"Alpha","channelNo":1e12}]'),
        ("extra_keys", b'[{"zone":"n","treeId":"a","devId":"A","type":4.0,"name":"Alpha","channelNo":-0,'
                       b'"extend":{"x":[1,2]}}]'),
        ("bad_last_node", whole[:-3] + b'"3"}]'),
        ("truncated", whole[:-7]),
        ("object_not_array", whole[1:-1].split(b"},")[0] + b"}"),
        ("nested_junk", b'[{"treeId":{"a":[1,{"b":null}]},"devId":[[[]]],"type":true,"name":null,"channelNo":{}},'
                        b'[],"x",7,null]'),
    ]


TARGETS = {
    "fuzz_basetree_init": base_tree_seeds,
    "fuzz_devicetree_init": device_tree_seeds,
    "fuzz_status_batch": status_batch_seeds,
    "fuzz_stylesheet": stylesheet_seeds,
    "fuzz_view_state": view_state_seeds,
    "fuzz_drag_data": drag_data_seeds,
}


def main():
    root = os.path.join(HERE, "corpus")
    for target, seeds in TARGETS.items():
        folder = os.path.join(root, target)
        os.makedirs(folder, exist_ok=True)
        for name, data in seeds():
            with open(os.path.join(folder, "seed_" + name), "wb") as handle:
                handle.write(data)
    return 0


if __name__ == "__main__":
    sys.exit(main())
