#!/usr/bin/python3
"""make_html.py DOCUMENT.md... OUT.html: the manual, and what is appended to it, as one HTML file that needs nothing else, with its pictures in it.

What it points to in still other documents is left as plain words: they do not go with it. The same text gives the same file.
"""
import base64
import re
import sys
from pathlib import Path

import markdown
from markdown.extensions.toc import slugify

STYLE = """
:root { color-scheme: light dark; }
body { max-width: 60em; margin: 2em auto; padding: 0 1em; font: 16px/1.5 sans-serif; }
h1, h2, h3 { line-height: 1.2; margin: 1.6em 0 .5em; }
h2 { border-bottom: 1px solid #999; }
table { border-collapse: collapse; margin: 1em 0; }
th, td { border: 1px solid #999; padding: .3em .6em; text-align: left; vertical-align: top; }
img { max-width: 100%; vertical-align: middle; }
code { font-size: .95em; background: rgba(128, 128, 128, .15); padding: 0 .2em; }
"""
PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>{title}</title>
<style>{style}</style>
</head>
<body>
{body}
</body>
</html>
"""


def title_of(document):
    return re.match(r"# (.*)", document.read_text())[1]


def joined(documents):
    """The text of all of them; what pointed to another one points into it."""
    text = "\n\n".join(document.read_text() for document in documents)
    for document in documents:
        text = text.replace(f"]({document.name}#", "](#").replace(f"]({document.name})", f"](#{slugify(title_of(document), '-')})")
    return text


def embed_pictures(body, folder):
    def embedded(found):
        picture = base64.b64encode((folder / found[1]).read_bytes()).decode()
        return f'src="data:image/png;base64,{picture}"'

    return re.sub(r'src="([^":]+\.png)"', embedded, body)


def drop_links_to_documents(body):
    return re.sub(r'<a href="[^"#:]+\.md[^"]*">(.*?)</a>', r"\1", body)


def check_links(body):
    ids = set(re.findall(r'\bid="([^"]+)"', body))
    for target in re.findall(r'href="([^"]+)"', body):
        if not (target.startswith("#") and target[1:] in ids):
            raise SystemExit(f"the manual points to {target}, which is not in it")


def main():
    *documents, target = map(Path, sys.argv[1:])
    body = markdown.markdown(joined(documents), extensions=["fenced_code", "sane_lists", "tables", "toc"], output_format="html")
    body = drop_links_to_documents(embed_pictures(body, documents[0].parent))
    check_links(body)
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(PAGE.format(title=title_of(documents[0]), style=STYLE, body=body))


main()
