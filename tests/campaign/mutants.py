"""Damages clips. The same seed and number always give the same mutant."""

import random


def mutant(seed, number, files):
    """Returns (content, name, how) of a damaged copy of one of the files, whose order must not change."""
    rng = random.Random(f"{seed} {number}")
    file = rng.choice(files)
    content = bytearray(file.read_bytes())
    how = []
    for _ in range(rng.choice((1, 1, 1, 2, 3))):
        damage = rng.choice(DAMAGES)
        content = damage(content, rng, files)
        how.append(damage.__name__)
    return bytes(content), f"{number:05}-{file.name}", " ".join(how)


def span(content, rng, most):
    """A random part of the content: start and end."""
    length = min(rng.randint(1, most), len(content))
    start = rng.randint(0, len(content) - length)
    return start, start + length


def flip_bytes(content, rng, files):
    for _ in range(rng.choice((1, 2, 5, 20, 100))):
        content[rng.randrange(len(content))] = rng.randrange(256)
    return content


def flip_header(content, rng, files):
    """Changes the first bytes, or what follows the name of a box of MP4 or QuickTime."""
    boxes = [at for at in (content.find(name) for name in BOXES) if at >= 0]
    start = rng.choice(boxes) if boxes and rng.random() < 0.8 else 0
    for _ in range(rng.choice((1, 2, 4))):
        at = start + rng.randrange(64)
        if at < len(content):
            content[at] = rng.randrange(256)
    return content


def set_number(content, rng, files):
    """Writes an extreme number of four bytes."""
    start, end = span(content, rng, 4)
    if rng.random() < 0.7:
        start = rng.randrange(min(len(content), 1000))
    value = rng.choice((b"\0\0\0\0", b"\xff\xff\xff\xff", b"\x7f\xff\xff\xff", b"\x80\0\0\0", b"\0\0\0\1", b"\0\1\0\0"))
    content[start : start + 4] = value
    return content


def truncate(content, rng, files):
    return content[: rng.randint(1, len(content))]


def zero_block(content, rng, files):
    start, end = span(content, rng, 2000)
    content[start:end] = bytes(end - start)
    return content


def fill_block(content, rng, files):
    start, end = span(content, rng, 500)
    content[start:end] = rng.randbytes(end - start)
    return content


def swap_blocks(content, rng, files):
    length = min(rng.randint(1, 1000), len(content) // 2)
    one = rng.randint(0, len(content) - length)
    other = rng.randint(0, len(content) - length)
    content[one : one + length], content[other : other + length] = (
        content[other : other + length],
        content[one : one + length],
    )
    return content


def remove_block(content, rng, files):
    start, end = span(content, rng, 500)
    return content[:start] + content[end:] or content


def repeat_block(content, rng, files):
    start, end = span(content, rng, 2000)
    return content[:end] + content[start:end] * rng.randint(1, 5) + content[end:]


def splice_header(content, rng, files):
    """Begins with the first bytes of another clip."""
    head = rng.choice(files).read_bytes()
    at = rng.choice((32, 200, 1000, 4000))
    return bytearray(head[:at]) + content[at:]


BOXES = (b"mvhd", b"tkhd", b"mdhd", b"stsd", b"stts", b"stsc", b"stsz", b"stco", b"ctts", b"elst", b"avcC", b"trun")
DAMAGES = (
    flip_bytes,
    flip_bytes,
    flip_header,
    flip_header,
    set_number,
    set_number,
    truncate,
    zero_block,
    fill_block,
    swap_blocks,
    remove_block,
    repeat_block,
    splice_header,
)
