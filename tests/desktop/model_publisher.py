#!/usr/bin/env python3
"""Publishes a small model on loopback, which hears one sentence. Usage: model_publisher.py FOLDER LIBVOSK SENTENCE

Prints its address. The file "how" in the folder says how archives are served; see tests/commands/publisher.py.
"""
import json
import pathlib
import sys
import threading

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "commands"))
from archives import RUNTIME, SMALL, bunch
from publisher import Publisher

folder, library, sentence = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]


class Switched(Publisher):
    def answer(self, request):
        request.path = f"/{(folder / 'how').read_text().strip()}/{request.path.rpartition('/')[2]}"
        super().answer(request)


heard = f"0 {json.dumps({'partial': sentence}, ensure_ascii=False)}\n" * 500
parts = {f"{SMALL}/{name}": b"small" * 40000 for name in ("am/final.mdl", "conf/model.conf", "conf/mfcc.conf", "graph/HCLr.fst",
                                                          "graph/Gr.fst")}
parts[f"{SMALL}/script"] = (heard + f"final {json.dumps({'text': sentence}, ensure_ascii=False)}\n").encode()
bunch(folder / f"{SMALL}.zip", parts)
bunch(folder / f"{RUNTIME}.zip", {f"{RUNTIME}/libvosk.so": library.read_bytes()})
print(Switched(folder).url(""), flush=True)
threading.Event().wait()
