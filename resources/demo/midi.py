"""Standard MIDI File writer: one piece, one track, one channel a part."""

import struct

from score import TICKS, Part, Piece, notes_of, tempo_map, ticks

DRUM_CHANNEL = 9
VOLUME, PAN, SUSTAIN, REVERB, CHORUS = 7, 10, 64, 91, 93
# Within one tick a note or pedal ends before the next one begins.
SETUP, ENDS, BEGINS = 0, 1, 2

Event = tuple[int, int, bytes]  # tick, order within the tick, message


def variable_length(value: int) -> bytes:
    parts = [value & 0x7F]
    while value := value >> 7:
        parts.insert(0, value & 0x7F | 0x80)
    return bytes(parts)


def tempo_events(changes: list[tuple[int, float]]) -> list[Event]:
    return [
        (tick, SETUP, b"\xff\x51\x03" + round(60_000_000 / rate).to_bytes(3, "big"))
        for tick, rate in changes
    ]


def setup_events(part: Part, channel: int) -> list[Event]:
    controls = {VOLUME: part.volume, PAN: part.pan, REVERB: part.reverb, CHORUS: 0}
    messages = [bytes([0xB0 | channel, number, value]) for number, value in controls.items()]
    messages.append(bytes([0xC0 | channel, part.program]))
    return [(0, SETUP, message) for message in messages]


def pedal_events(piece: Piece, part: Part, channel: int, end: int) -> list[Event]:
    """Up on the change of harmony, down again just after it; the last chord rings on."""
    events = []
    for start in range(piece.bar_start(1), end, ticks(part.pedal)):
        events.append((start, ENDS, bytes([0xB0 | channel, SUSTAIN, 0])))
        events.append((start + TICKS // 8, BEGINS, bytes([0xB0 | channel, SUSTAIN, 127])))
    return events


def part_events(piece: Piece, part: Part, channel: int) -> list[Event]:
    events = setup_events(part, channel)
    notes = notes_of(piece, part)
    for note in notes:
        events.append((note.start, BEGINS, bytes([0x90 | channel, note.pitch, note.velocity])))
        events.append((note.start + note.length, ENDS, bytes([0x80 | channel, note.pitch, 0])))
    if part.pedal:
        events += pedal_events(piece, part, channel, max(note.start for note in notes) + 1)
    return events


def midi_file(piece: Piece) -> bytes:
    changes = tempo_map(piece)
    events = tempo_events(changes)
    channels = [channel for channel in range(16) if channel != DRUM_CHANNEL]
    for part, channel in zip(piece.parts, channels):
        events += part_events(piece, part, channel)
    events.sort()
    ring = round(piece.ring * changes[-1][1] / 60 * TICKS)
    events.append((events[-1][0] + ring, ENDS, b"\xff\x2f\x00"))

    data, now = bytearray(), 0
    for tick, _, message in events:
        data += variable_length(tick - now) + message
        now = tick
    header = b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS)
    return header + b"MTrk" + struct.pack(">I", len(data)) + bytes(data)
