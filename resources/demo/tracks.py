"""The music of the demo disc: seven short arrangements of works in the public domain.

Every piece is written in the notation of score.py. Loudness between the tracks
is levelled later, so the volumes here only balance the parts of one piece.
"""

from score import Part, Piece

# General MIDI programs, counted from 0.
HONKY_TONK, PIANO, HARPSICHORD, MUSIC_BOX = 3, 0, 6, 10
GUITAR, PIZZICATO, HARP, STRINGS = 24, 45, 46, 48
HORN, OBOE, BASSOON, CLARINET, FLUTE, RECORDER = 60, 68, 70, 71, 73, 74


def bars(*texts: str) -> str:
    return " | ".join(text.strip() for text in texts)


def morning_mood() -> Piece:
    flute = """
        !mp B5/8 G#5 F#5 E5 F#5 G#5 | B5 {G#5,A5}G#5 F#5 E5 F#5/16 G#5 F#5 G#5 |
        {G#5,A5}B5/8 G#5 B5 !mf> C#6 G#5 C#6 | B5 G#5 F#5 !p E5/4 r/8 | R*4 |
        !mp D#6/8 B#5 A#5 G#5 A#5 B#5 | D#6 {B#5,C#6}B#5 A#5 G#5 A#5/16 B#5 A#5 B#5 |
        {B#5,C#6}D#6/8 B#5 D#6 !mf> E6 C#6 E6 | F#6 D#6 C#6 !mp B5/4 r/8 |
        !mf F#6/8 D#6 C#6 B5 C#6/16 D#6 C#6 D#6 | R | !mf< F#6/8 D#6 B5 r/4. | F#6/8 D#6 B5 r/4. |
        !f B5/8 G#5 F#5 E5 F#5 G#5 | B5 {G#5,A5}G#5 F#5 E5 F#5/16 G#5 F#5 G#5 |
        {G#5,A5}B5/8 G#5 B5 C#6 G#5 C#6 | !mf> B5 G#5 F#5 !mp E5/4 r/8 | !p B5/8 G#5 F#5 E5 F#5 G#5 |
        B5 G#5 F#5 E5 F#5/16 G#5 F#5 G#5 | !p B5/4. C#6 | !pp> B5/2.~ | B5/2."""
    oboe = """
        R*4 | !mf B4/8 G#4 F#4 E4 F#4 G#4 | B4 {G#4,A4}G#4 F#4 E4 F#4/16 G#4 F#4 G#4 |
        {G#4,A4}B4/8 G#4 B4 !f> C#5 G#4 C#5 | D#5 B#4 A#4 !mf G#4/4 r/8 | R*5 |
        !mf F#5/8 D#5 C#5 B4 C#5/16 D#5 C#5 D#5 | !mf< r/4. F#5/8 D#5 B4 | r/4. F#5/8 D#5 B4 |
        !mf B4/4. E5 | B4 E5 | E5 E5 | !mp E5/2. | R*2 | !p G#4/4. G#4 | !pp G#4/2.~ | G#4/2."""
    clarinets = """
        !p B3+G#4/2. | B3+G#4 | B3+G#4/4. C#4+E4+G#4 | B3+G#4/2. | G#3+E4 | G#3+E4 | G#3+E4/4. G#3+E4 |
        B#3+D#4/2. | B#3+D#4 | B#3+D#4 | B#3+D#4/4. C#4+E4 | D#4+F#4/2. | D#4+F#4 | D#4+F#4 |
        !p< D#4+F#4/4. D#4+F#4 | D#4+A4 D#4+A4 | !mf G#4+B4/2. | G#4+B4 | G#4+B4/4. G#4+C#5 |
        !mp G#4+B4/2. | !p B3+G#4 | B3+G#4 | E4+B4/4. E4+C#5 | !pp E4+B4/2.~ | E4+B4/2."""
    bassoon = """
        !p E3/2. | E3 | E3/4. C#3 | E3/2. | E3 | E3 | E3/4. C#3 | G#2/2. | G#2 | G#2 | G#2/4. C#3 | B2/2. |
        B2 | B2 | B2/4. B2 | B2 B2 | !mf E3/2. | E3 | E3/4. E3 | !mp E3/2. | !p E3 | E3 | E3/4. E3 |
        !pp E3/2.~ | E3/2."""
    horns = """
        R*3 | !mp r/4. B3/8 G#3 F#3 | !p E3/2. | R*2 | !mp r/4. D#4/8 B#3 A#3 | !p G#3/2. | R*2 |
        !mp r/4. F#4/8 D#4 C#4 | !p B3/2. | !p< B3 | B3/4. B3 | B3 B3 | !mf B3+E4/2. | B3+E4 |
        B3+E4/4. C#4+E4 | !mp B3/4. B3/8 G#3 F#3 | !p E3/2. | R | !p B3/4. C#4 | !pp B3/2.~ | B3/2."""
    melody = """
        R*16 | !f B4+B5/8 G#4+G#5 F#4+F#5 E4+E5 F#4+F#5 G#4+G#5 |
        B4+B5 {G#5,A5}G#4+G#5 F#4+F#5 E4+E5 F#4+F#5/16 G#4+G#5 F#4+F#5 G#4+G#5 |
        {G#5,A5}B4+B5/8 G#4+G#5 B4+B5 C#5+C#6 G#4+G#5 C#5+C#6 |
        !mf> B4+B5 G#4+G#5 F#4+F#5 !mp E4+E5/4 r/8 | R*2 | !p B4+G#5/4. C#5+G#5 | !pp B4+G#5/2.~ |
        B4+G#5/2."""
    harmony = """
        R*12 | !pp B3+D#4+F#4/2. | !p B2+F#3+B3 | !p< B3+D#4+F#4/4. B2+F#3+B3 | B3+D#4+A4 B2+F#3+A3 |
        !mf E2+B2+G#3+E4/2. | E2+B2+G#3+E4 | E2+B2+G#3+E4/4. E2+C#3+G#3+E4 | !mp> E2+B2+G#3+E4/2. |
        !p E3+B3+E4 | E3+B3+E4 | E3+B3+E4/4. E3+C#4+E4 | !pp E2+B2+E3+B3+E4/2.~ | E2+B2+E3+B3+E4/2."""
    return Piece(
        "Morning Mood", "Edvard Grieg", "6/8", "4.", "1:66 16:68 17:64 20:64 23:56 25:46",
        [
            Part(FLUTE, [flute], volume=104, pan=54, reverb=70),
            Part(OBOE, [oboe], volume=90, pan=74, reverb=70),
            Part(CLARINET, [clarinets], volume=78, pan=80, reverb=70),
            Part(BASSOON, [bassoon], volume=84, pan=48, reverb=70),
            Part(HORN, [horns], volume=50, pan=88, reverb=80),
            Part(STRINGS, [melody], volume=84, pan=44, reverb=70),
            Part(STRINGS, [harmony], volume=74, pan=70, reverb=70),
        ],
        ring=1.5, fade=4.0,
    )


def prelude_in_c() -> Piece:
    """Each bar of the prelude breaks one five-note chord twice, upwards from the bass."""
    chords = """
        C4 E4 G4 C5 E5, C4 D4 A4 D5 F5, B3 D4 G4 D5 F5, C4 E4 G4 C5 E5,
        C4 E4 A4 E5 A5, C4 D4 F#4 A4 D5, B3 D4 G4 D5 G5, B3 C4 E4 G4 C5,
        A3 C4 E4 G4 C5, D3 A3 D4 F#4 C5, G3 B3 D4 G4 B4, G3 Bb3 E4 G4 C#5,
        F3 A3 D4 A4 D5, F3 Ab3 D4 F4 B4, E3 G3 C4 G4 C5, E3 F3 A3 C4 F4,
        D3 F3 A3 C4 F4, G2 D3 G3 B3 F4, C3 E3 G3 C4 E4"""
    bass, tenor, treble = [], [], []
    for chord in chords.split(","):
        low, second, *high = chord.split()
        bass.append(f"{low}/2 {low}")
        tenor.append(f"r/16 {second}/8.~ {second}/4 " * 2)
        treble.append(f"r/8 {high[0]}/16 {high[1]} {high[2]} {high[0]} {high[1]} {high[2]} " * 2)
    bass.append("C2+C3+G3+C4+E4+G4+C5%/1")
    return Piece(
        "Prelude in C major, BWV 846", "Johann Sebastian Bach", "4/4", "4", "1:116 17:116 19:104 20:76",
        [Part(HARPSICHORD, [bars(*bass), bars(*tenor, "R"), bars(*treble, "R")], reverb=60)],
        pause=1.5, ring=2.0, fade=2.0,
    )


def the_entertainer() -> Piece:
    theme = "!mp E4 C5/8 E4/16 C5/8 E4/16 C5~ | C5/4~ C5/16 !mf< C5+E5+C6 D5+F5+D6 D#5+F#5+D#6"
    answer = "!f E5+G5+E6 C5+E5+C6 D5+F5+D6 E5+G5+E6/8 B4+D5+B5/16 D5+F5+D6/8 | C5+E5+C6"
    octaves = "E5+E6 C5+C6 D5+D6 E5+E6/8 C5+C6/16 D5+D6 C5+C6"
    right = f"""
        !f D6/16 E6 C6 A5/8 B5/16 G5/8 | D5/16 E5 C5 A4/8 B4/16 G4/8 | D4/16 E4 C4 A3/8 B3/16 A3 Ab3 |
        G3/8 r G4+B4+D5+G5 !mp D4/16 D#4 | {theme} | {answer}/4. !mp D4/16 D#4 |
        E4 C5/8 E4/16 C5/8 E4/16 C5~ | C5/4. !mf A4+C5+A5/16 G4+C5+G5 |
        !f F#4+C5+F#5 A4+A5 C5+C6 E5+E6/8 D5+D6/16 C5+C6 A4+A5 | D5+F5+D6/4. !mp D4/16 D#4 |
        {theme} | {answer}/4. !mf C5+C6/16 D5+D6 | {octaves} | !mf< {octaves} |
        {answer}/4 !ff C5+E5+C6/8 r"""
    stride = "C3/8 E3+G3+C4 G2+G3 G3+Bb3+C4 | F2+F3 A3+C4 E2+E3"
    cadence = "G3+C4 | G2 E3+G3+C4 G2 F3+G3+B3 | C3 E3+G3+C4"
    left = f"""
        !mf D5/16 E5 C5 A4/8 B4/16 G4/8 | D4/16 E4 C4 A3/8 B3/16 G3/8 | D3/16 E3 C3 A2/8 B2/16 A2 Ab2 |
        G2/8 r G1+G2 G3+B3 | !mp {stride} {cadence} E3+G3+C4 G3+B3 | {stride} Eb2+Eb3 |
        D2+D3 D3+F#3+A3+C4 D3 F#3+A3+C4 | G3+B3 G2+G3 A2+A3 B2+B3 | {stride} {cadence} G3+C4+E4 r |
        C3+C4 G3+C4+E4 Bb2+Bb3 G3+C4+E4 | A2+A3 A3+C4+F4 Ab2+Ab3 Ab3+C4+F4 | G2+G3 G3+C4+E4 G2 G3+B3 |
        C3+G3+C4 G2+G3 !f C2+C3 r"""
    return Piece(
        "The Entertainer", "Scott Joplin", "2/4", "4", "1:76 19:76 20:62",
        [Part(HONKY_TONK, [right], volume=104, reverb=40), Part(HONKY_TONK, [left], volume=100, reverb=40)],
        ring=1.5, fade=0.8,
    )


def gymnopedie() -> Piece:
    melody = """
        R*2 | !p r/4 F#5 A5 | G5 F#5 C#5 | B4 C#5 D5 | A4/2. | !pp F#4~ | F#4 | !p< r/4 F#5 A5 |
        !mp G5 F#5 C#5 | B4 C#5 D5 | A4/2. | C#5 | F#5 | !mp> E4~ | E4 | !mp G5 | F#5 | B4/4 A4 B4 |
        C#5 D5 E5 | !mp> C#5 D5 E5 | !p F#4/2. | C4+E4+A4+C5% | !pp D4+F#4+A4+D5%"""
    sway = bars(*["r/4 B3+D4+F#4/2 | r/4 A3+C#4+F#4/2"] * 6)
    chords = f"""
        !pp {sway} | r/4 A3+C#4+F#4/2 | r/4 B3+D4+F#4/2 | r/4 G3+B3/2 | r/4 B3+D4+G4/2 |
        r/4 B3+E4+G4/2 | r/4 A3+C#4+F#4/2 | r/4 B3+D4+F#4/2 | r/4 C#4+E4+A4/2 | r/4 A3+C#4+F#4+A4/2 |
        r/4 A3+D4 B3+D4+G4 | R | R"""
    steps = bars(*["G2/2. | D2"] * 6)
    bass = f"!p {steps} | F#2 | B1 | E2 | E2 | E2 | F#2 | B1 | E2 | E2 | E2 | A2+G3 | !pp D2+A2+D3"
    return Piece(
        "Gymnopedie No. 1", "Erik Satie", "3/4", "4", "1:94 21:94 24:78",
        [Part(PIANO, [melody], volume=112, reverb=70, pedal="2."),
         Part(PIANO, [chords, bass], volume=92, reverb=70, pedal="2.")],
        pause=1.8, ring=1.5, fade=2.5,
    )


def held_bass(chord: str) -> str:
    return chord.split()[0] + "/2."


def picked(chord: str) -> str:
    return "r/8 " + " ".join(chord.split()[1:])


def greensleeves() -> Piece:
    tune = """
        r/4. r/4 !mp A4/8 | C5/4 D5/8 E5/8. F#5/16 E5/8 | D5/4 B4/8 G4/8. A4/16 B4/8 |
        C5/4 A4/8 A4/8. G#4/16 A4/8 | B4/4 G#4/8 E4/4 A4/8 | !mf C5/4 D5/8 E5/8. F#5/16 E5/8 |
        D5/4 B4/8 G4/8. A4/16 B4/8 | C5/8. B4/16 A4/8 G#4/8. F#4/16 G#4/8 | !mp A4/4. A4/4 r/8 |
        !f G5/4. G5/8. F#5/16 E5/8 | D5/4 B4/8 G4/8. A4/16 B4/8 | !mf> C5/4 A4/8 A4/8. G#4/16 A4/8 |
        B4/4 G#4/8 !mp E4/4. | !f G5/4. G5/8. F#5/16 E5/8 | !mf D5/4 B4/8 G4/8. A4/16 B4/8 |
        !mf> C5/8. B4/16 A4/8 G#4/8. F#4/16 G#4/8 | !p A4/2."""
    am, am_low = "A2 E3 A3 C4 A3 E3", "A2 C3 E3 A3 E3 C3"
    g, f = "G2 D3 G3 B3 G3 D3", "F2 C3 F3 A3 F3 C3"
    e, c = "E2 B2 E3 G#3 E3 B2", "C3 G3 C4 E4 C4 G3"
    verse, chorus = [am, am, g, f, e, am, g], [am_low, c, g, f, e, c, g]
    thumb = bars(
        "!mf " + bars(*map(held_bass, verse)), "A2/4. E2", bars(*map(held_bass, chorus)),
        "A2/4. E2", "!mp A2+E3+A3+C4+E4%/2.",
    )
    fingers = bars(
        "!mp " + bars(*map(picked, verse)), "r/8 E3 C4 r B2 G#3", bars(*map(picked, chorus)),
        "r/8 E3 C4 r B2 G#3", "R",
    )
    return Piece(
        "Greensleeves", "Traditional", "6/8", "4.", "1:56 15:56 16:50 17:38",
        [Part(RECORDER, [tune], volume=100, pan=58, reverb=75),
         Part(GUITAR, [thumb, fingers], volume=92, pan=74, reverb=60, pedal="4.")],
        ring=3.0, fade=2.0,
    )


def fuer_elise() -> Piece:
    theme = """
        E5/16 D#5 E5 B4 D5 C5 | A4/8 r/16 C4 E4 A4 | B4/8 r/16 E4 G#4 B4 | C5/8 r/16 E4 E5 D#5 |
        E5 D#5 E5 B4 D5 C5 | A4/8 r/16 C4 E4 A4 | B4/8 r/16 E4 C5 B4"""
    right = f"""
        !mp E5/16 D#5 | {theme} | A4/8 r/16 !mf< B4 C5 D5 | E5/8. G4/16 F5 E5 | !mf> D5/8. F4/16 E5 D5 |
        C5/8. E4/16 D5 C5 | !p B4/8 r/16 E4 E5 r | r E5 E6 r r D#5 | E5 r r D#5 E5 D#5 | !mp {theme} |
        !p A4/4."""
    a_minor, e_major = "A2/16 E3 A3 r/8.", "E2/16 E3 G#3 r/8."
    accompaniment = bars("R", a_minor, e_major, a_minor, "R", a_minor, e_major)
    left = f"""
        r/8 | !mp {accompaniment} | {a_minor} | C3/16 G3 C4 r/8. | G2/16 G3 B3 r/8. | {a_minor} |
        E2/16 E3 E4 r r E4 | E5 r r D#5 E5 r | r D#5 E5 r/8. | {accompaniment} | !p A2+A3%/4."""
    return Piece(
        "Fuer Elise", "Ludwig van Beethoven", "3/8", "8", "1:134 20:134 21:116 22:80",
        [Part(MUSIC_BOX, [right], volume=108, pan=58, reverb=60),
         Part(MUSIC_BOX, [left], volume=80, pan=72, reverb=60, pedal="4.")],
        pickup="8", pause=1.2, ring=2.0, fade=2.5,
    )


def canon_in_d() -> Piece:
    """Three violins play the same line, each two bars after the one before."""
    line = [
        "F#5/4 E5 D5 C#5 | B4 A4 B4 C#5",
        "D5/4 C#5 B4 A4 | G4 F#4 G4 E4",
        "D4/8 F#4 A4 G4 F#4 D4 F#4 E4 | D4 B3 D4 A4 G4 B4 A4 G4",
        "F#4/8 D4 E4 C#5 D5 F#5 A5 A4 | B4 G4 A4 F#4 D4 D5 D5/8. C#5/16",
        "D5/16 C#5 D5 D4 C#4 A4 E4 F#4 D4 D5 C#5 B4 C#5 F#5 A5 B5 | "
        "G5 F#5 E5 G5 F#5 E5 D5 C#5 B4 A4 G4 F#4 E4 G4 F#4 E4",
    ]
    ground = "D3/4 A2 B2 F#2 | G2 D2 G2 A2"
    chords = """
        D4+F#4+A4%/4 C#4+E4+A4% D4+F#4+B4% C#4+F#4+A4% | B3+D4+G4% A3+D4+F#4% B3+D4+G4% C#4+E4+A4%"""
    first = bars("R*2 | !p< " + line[0], *line[1:], "!f> D4/1")
    second = bars("R*4 | !p< " + line[0], *line[1:4], "!f> D5/1")
    third = bars("R*6 | !p< " + line[0], *line[1:3], "!f> F#4/1")
    return Piece(
        "Canon in D", "Johann Pachelbel", "4/4", "4", "1:76 11:76 13:54",
        [
            Part(STRINGS, [first], volume=92, pan=38, reverb=75),
            Part(STRINGS, [second], volume=92, pan=64, reverb=75),
            Part(STRINGS, [third], volume=92, pan=90, reverb=75),
            Part(PIZZICATO, [bars("!mf " + ground, *[ground] * 5, "D2+D3/1")], volume=102, reverb=70),
            Part(HARP, [bars("!p " + chords, *[chords] * 5, "!mp D3+A3+D4+F#4+A4%/1")],
                 volume=74, pan=52, reverb=80),
        ],
        pause=2.0, ring=2.0, fade=3.0,
    )


def disc() -> list[Piece]:
    tracks = [morning_mood, prelude_in_c, the_entertainer, gymnopedie, greensleeves, fuer_elise, canon_in_d]
    return [track() for track in tracks]
