"""The archives that publishers of speech models have, and those that they should not have."""
import hashlib
import io
import json
import os
import pathlib
import platform
import shutil
import tarfile
import wave
import zipfile

SMALL, BIG, RUNTIME = "vosk-model-small-vn-0.4", "vosk-model-vn-0.4", f"vosk-linux-{platform.machine()}-0.3.45"
ZIPFORMER = "sherpa-onnx-zipformer-vi-30M-int8-2026-02-09"
NPM = f"sherpa-onnx-linux-{'x64' if platform.machine() == 'x86_64' else 'arm64'}-1.13.8.tgz"
LINKS = {"link": tarfile.SYMTYPE, "hard": tarfile.LNKTYPE, "fifo": tarfile.FIFOTYPE, "device": tarfile.CHRTYPE}


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def publish_vosk(files, library):
    """Two models, with a list of checksums that has one of them, and the library."""
    parts = ("am/final.mdl", "conf/model.conf", "conf/mfcc.conf", "graph/HCLr.fst", "graph/Gr.fst")
    bunch(files / f"{SMALL}.zip", {f"{SMALL}/{name}": b"small" * 4000 for name in parts})
    bunch(files / f"{BIG}.zip", {name: b"big" * 4000 for name in ("final.mdl", "mfcc.conf", "HCLG.fst")})
    bunch(files / f"{RUNTIME}.zip", {f"{RUNTIME}/libvosk.so": library.read_bytes()})
    md5 = hashlib.md5((files / f"{BIG}.zip").read_bytes()).hexdigest()
    sums = [{"name": "another", "md5": "0" * 32}, {"name": BIG, "md5": md5}]
    (files / "model-list.json").write_text(json.dumps(sums))


def publish_sherpa(files, fake, clip):
    """A model with a list of checksums, and the library. Makes a recording too.

    Returns what is in the model's archive, and a word that is heard in the recording.
    """
    library, parts, said = sherpa_files(fake, clip)
    model = {f"{ZIPFORMER}/{name}": content for name, content in parts.items()}
    bunch(files / NPM, {f"package/{name}": content for name, content in library.items()})
    archive = files / f"{ZIPFORMER}.tar.bz2"
    bunch(archive, model)
    (files / "checksum.txt").write_text(f"another.tar.bz2\t{'0' * 64}\n{archive.name}\t{sha256(archive)}\n")
    return model, said


def bunch(path, entries, compression=zipfile.ZIP_STORED):
    """Makes a zip or tar archive. An entry's content is bytes, or the kind of something else and where it leads."""
    if path.suffix == ".zip":
        with zipfile.ZipFile(path, "w") as archive:
            for name, content in entries.items():
                entry = zipfile.ZipInfo(name)
                if isinstance(content, tuple):
                    entry.external_attr = 0o120777 << 16
                    content = content[1]
                archive.writestr(entry, content, compression)
        return
    with tarfile.open(path, "w:bz2" if path.suffix == ".bz2" else "w:gz") as archive:
        for name, content in entries.items():
            entry = tarfile.TarInfo(name)
            if isinstance(content, tuple):
                entry.type, entry.linkname = LINKS[content[0]], content[1]
                archive.addfile(entry)
            else:
                entry.size = len(content)
                archive.addfile(entry, io.BytesIO(content))


def container(metadata):
    """The container of a model with this metadata, and a network that nothing can run."""
    def field(number, content):
        return bytes([number << 3 | 2, len(content)]) + content
    pairs = [field(1, key.encode()) + field(2, value.encode()) for key, value in metadata.items()]
    return b"\x08\x08" + field(7, b"graph") + b"".join(field(14, pair) for pair in pairs)


def sherpa_files(fake, clip):
    """The files of sherpa-onnx's library, those of a model, and a word that they hear in the recording that is put into `clip`.

    They are the real ones if the environment names them.
    """
    named = [os.environ.get(each) for each in ("TAVELO_SHERPA_LIBRARY", "TAVELO_MODEL", "TAVELO_CLIPS")]
    if all(named):
        library, model, clips = map(pathlib.Path, named)
        name, said = (clips / "transcripts.tsv").read_text().splitlines()[0].split("\t")[:2]
        shutil.copy(clips / f"{name}.wav", clip)
        names = "encoder.onnx", "decoder.onnx", "joiner.onnx", "tokens.txt"
        return ({each: (library.parent / each).read_bytes() for each in ("libsherpa-onnx-c-api.so", "libonnxruntime.so")},
                {each: (model / each).read_bytes() for each in names}, said)
    sizes = {"vocab_size": "3", "context_size": "2"}
    with wave.open(str(clip), "wb") as sound:
        sound.setparams((1, 2, 16000, 0, "NONE", None))
        sound.writeframes(bytes([0, 16, 0, 240]) * 12000)
    library = fake.read_bytes()
    return ({"libsherpa-onnx-c-api.so": library, "libonnxruntime.so": library + b"OrtGetApiBase"},
            {"encoder.int8.onnx": container({"model_type": "zipformer2"}), "decoder.int8.onnx": container(sizes),
             "joiner.int8.onnx": container({"joiner_dim": "5"}), "tokens.txt": "<blk> 0\n▁A 1\nB 2\n".encode()}, "độ dài")
