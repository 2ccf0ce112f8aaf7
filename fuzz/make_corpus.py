"""Makes the seeds of the property list fuzzers: python3 fuzz/make_corpus.py"""

import datetime
import os
import plistlib

HERE = os.path.dirname(os.path.abspath(__file__))
HEAD = '<?xml version="1.0" encoding="UTF-8"?>\n'
DOCTYPE = ('<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" '
           '"http://www.apple.com/DTDs/PropertyList-1.0.dtd">\n')

VALUES = {
    "everything": {
        "array": [1, "two", [], {}, [True, False]], "data": b"\x00\xff" * 90,
        "date": datetime.datetime(2026, 1, 2, 3, 4, 5), "dict": {"deep": {"deeper": {}}},
        "integers": [0, 255, 256, 65536, 2**31, 2**63 - 1, 2**64 - 1, -1, -2**63],
        "reals": [0.5, -1e300, 5e-324, float("inf"), float("nan")],
        "text": "caf\u00e9 \U0001f600 <&>", "long": "x" * 70},
    "settings": {"presentationStyle": 1, "reverseWhenTopPresented": True, "toggleSize": 0.25,
                 "tint": "#336699:0.50", "moduleConfig": ["com.example.a", "com.example.b"]},
    "image": {"backgroundImage": bytes(range(256)) * 3},
    "string": "alone", "list": [[[[[]]]]], "keys": {"b": 1, "a": 2, "\uff5e": 3, "\U0001f600": 4},
}

XML = {
    "bare": "<dict><key>a</key><true/></dict>",
    "comments": "<plist><!-- c --><array><?pi x?><string>a<!-- b -->c</string></array></plist>",
    "cdata": "<plist><string>1<![CDATA[<&>]]>2</string></plist>",
    "references": "<plist><string>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;</string></plist>",
    "numbers": "<plist><array><integer>0x1F</integer><integer>-0x10</integer><integer>+7</integer>"
               "<real>1e5</real><real>-inf</real><real>nan</real><real>-nan</real></array></plist>",
    "attributes": "<plist version='1.0'><dict a=\"b\" ><key id = 'c'>k</key><false /></dict></plist>",
    "duplicate": "<plist><dict><key>a</key><true/><key>a</key><false/></dict></plist>",
    "subset": "<!DOCTYPE plist [<!ELEMENT plist ANY>]><plist><true/></plist>",
    "entity": "<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>",
    "empties": "<plist><array><string/><data/><array/><dict/><true></true></array></plist>",
    "spaces": "<plist><array><data> Q U\nJD </data><integer> 5 </integer></array></plist>",
    "no-key": "<plist><dict><true/></dict></plist>", "no-value": "<plist><dict><key>a</key></dict>",
}

# Items of specifier lists; each becomes a list of its own, and all of them one.
ITEMS = {
    "group": {"cell": "PSGroupCell", "label": "Look", "footerText": "What it looks like.", "id": "look"},
    "switch": {"cell": "PSSwitchCell", "label": "On", "key": "on", "default": True, "defaults": "com.sample"},
    "slider": {"cell": "PSSliderCell", "key": "size", "min": 0.0, "max": 2.0, "default": 0.5,
               "isSegmented": True, "segmentCount": 4, "showValue": True, "isContinuous": True},
    "segment": {"cell": "PSSegmentCell", "key": "style", "default": 0, "validValues": [0, 1],
                "validTitles": ["Plain", "Round"]},
    "choice": {"cell": "PSLinkListCell", "label": "Order", "key": "order", "default": "a",
               "detail": "PSListItemsController", "validValues": ["a", "b"], "validTitles": ["A", "B"]},
    "text": {"cell": "PSEditTextCell", "label": "Name", "key": "name", "placeholder": "None",
             "keyboard": "numbers", "height": 60},
    "secure": {"cell": "PSSecureEditTextCell", "label": "Code", "key": "code"},
    "value": {"cell": "PSTitleValueCell", "label": "Version", "get": "version:"},
    "static": {"cell": "PSStaticTextCell", "label": "As it is."},
    "button": {"cell": "PSButtonCell", "label": "Restart", "action": "restart",
               "confirmation": {"prompt": "Sure?", "okTitle": "Yes", "cancelTitle": "No"}},
    "link": {"cell": "PSLinkCell", "label": "More", "detail": "PSListController", "cellClass": "PSTableCell",
             "icon": "more.png", "enabled": False},
    "unknown": {"cell": "PSNoSuchCell", "label": 5, "key": [1]},
}

SCRIPTS = {
    "device": "trait idiom pad\ntrait screen 390x844@3\nput /a/b.plist {\"k\": [1, 2.5, true]}\n"
              "file /a/b.plist\nchmod 600 /a/b.plist\nlink /c /a/b.plist\nrm /c\n",
    "no-path": "put here @file\nput here {}\nrm here\n",
    "hand": "open\ntap #style\nset \"Size\" 0.5\ntype 1 2 \"text\"\nslide #size~2 1\npress #a 1.5\n",
    "tables": "open\ninsert 0 1\ndelete 1 0\nmove #a to 1 0\nscroll -0.5\nback\n",
    "time": "open\nadvance 0.1\nbackground all\nbackground 2\n",
    "names": "open\nsend page respring\nsend store setBool:forKey: true k\nget _table\nput-value a 1\n",
    "expectations": "open\nexpect title \"T\"\nexpect no row #a\nexpect pref a integer 5\nexpect no writes\n"
                    "expect row #a value 3 # a comment\nexpect footer #a \"text\"\nexpect log \"x\"\n",
    "reports": "open\nshow\ntree\nrow 0 0\nlog\nwrites\nspawned\n",
}


def put(folder, name, content):
    path = os.path.join(HERE, "corpus", folder)
    os.makedirs(path, exist_ok=True)
    with open(os.path.join(path, name), "wb") as file:
        file.write(content)


for name, value in VALUES.items():
    xml = plistlib.dumps(value)
    binary = plistlib.dumps(value, fmt=plistlib.FMT_BINARY)
    put("fuzz-plist-binary", name, binary)
    for folder in ("fuzz-plist-xml", "fuzz-plist-peer"):
        put(folder, name + ".xml", xml)
    put("fuzz-plist-peer", name + ".binary", binary)

for name, text in XML.items():
    for folder in ("fuzz-plist-xml", "fuzz-plist-peer"):
        put(folder, name + ".xml", (HEAD + DOCTYPE + text).encode()
            if "DOCTYPE" not in text else text.encode())
put("fuzz-plist-xml", "utf16", b"\xff\xfe" + (HEAD + XML["bare"]).replace("UTF-8", "UTF-16").encode("utf-16-le"))
put("fuzz-plist-xml", "mark", b"\xef\xbb\xbf" + XML["bare"].encode())
# Shared objects: two levels of ten references to the next.
objects = [b"\xaa" + bytes([1] * 10), b"\xaa" + bytes([2] * 10), b"\x51x"]
table, offset = b"", 8
for item in objects:
    table, offset = table + bytes([offset]), offset + len(item)
put("fuzz-plist-binary", "shared", b"bplist00" + b"".join(objects) + table + b"\0" * 6 + b"\1\1"
    + (3).to_bytes(8, "big") + (0).to_bytes(8, "big") + offset.to_bytes(8, "big"))
for name, item in ITEMS.items():
    put("fuzz-specifier-list", name, plistlib.dumps({"title": name, "items": [item]}))
put("fuzz-specifier-list", "all", plistlib.dumps({"title": "All", "items": list(ITEMS.values())}))
put("fuzz-specifier-list", "binary",
    plistlib.dumps({"items": [ITEMS["group"], ITEMS["switch"]]}, fmt=plistlib.FMT_BINARY))
for name, text in SCRIPTS.items():
    put("fuzz-script", name, text.encode())
