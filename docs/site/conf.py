# How the pages are made. tools/docs lays them together and sets TORNBY_VERSION.
import os

from pygments.lexers.basic import VBScriptLexer
from pygments.lexers.dotnet import VbNetLexer

project = "Tornby"
version = release = os.environ["TORNBY_VERSION"]
html_title = f"Tornby {release}"
html_theme = "furo"
html_theme_options = {
    "light_css_variables": {"color-brand-primary": "#1a5fa8", "color-brand-content": "#1a5fa8"},
    "dark_css_variables": {  # Debian's theme comes without dark colours of its own
        "color-brand-primary": "#7ab6f0", "color-brand-content": "#7ab6f0",
        "color-foreground-primary": "#d8dade", "color-foreground-secondary": "#9ca0a5", "color-foreground-muted": "#81868d",
        "color-foreground-border": "#666666", "color-background-primary": "#131416", "color-background-secondary": "#1a1c1e",
        "color-background-hover": "#1e2124", "color-background-hover--transparent": "#1e212400",
        "color-background-border": "#303335", "color-background-item": "#444444", "color-inline-code-background": "#1e2124",
        "color-sidebar-item-background--hover": "#1e2124", "color-highlighted-background": "#083563",
        "color-table-header-background": "#1a1c1e", "color-table-border": "#303335",
    },
}
html_static_path = ["_static"]
html_css_files = ["tornby.css"]
html_show_sphinx = html_show_copyright = html_copy_source = False
extensions = ["myst_parser", "sphinx_copybutton"]
copybutton_selector = "div:not(.highlight-text):not(.highlight-vb) > div.highlight > pre"
myst_heading_anchors = 3
html_use_index = False


def setup(app):
    app.add_lexer("vb", VbNetLexer)
    app.add_lexer("vba", VbNetLexer)
    app.add_lexer("vbscript", VBScriptLexer)
