"""HTML Help: names in Windows' case and with its separators, context ids as words and numbers of headers, and tables in
the encoding that the project's language has."""
KIND = "HTML Help"
TITLE = "\u8aac\u660e\u66f8"
SOURCES = [".", "host/resource.h"]
FILES = {
    "Product.HHP": f"""[OPTIONS]\r\nLanguage=0x411 Japanese\r\nDefault topic=HTML\\start.htm\r\nTitle={TITLE}
Contents file=toc.hhc\r\nIndex file=Words.hhk\r\n[ALIAS]\r\nIDH_START = html\\Start.htm ; the first\r\n;IDH_NO=html\\no.htm
IDH_OPTION=html\\print.htm#options\r\nIDH_OUT=ms-its:other.chm::/a.htm\r\n#include "inc\\more.h"\r\n[MAP]\r\n#include <..\\src\\RESOURCE.h>
#include gone.h\r\n#define IDH_START 1000\r\n#define IDH_UNUSED 7\r\n#define\r\n#include\r\n""".encode("cp932"),
    "inc/more.h": "IDH_MORE=html\\print.htm\n#include more.h\n",
    "host/resource.h": "/* ids */\n#define IDH_OPTION (0x3E9) // hex\n#define IDH_MORE sizeof(int)\n",
    "toc.hhc": f"""<OBJECT type="text/site properties"><param name="Name" value="no"></OBJECT><UL>
        <LI> <OBJECT type="text/sitemap"><param name="Name" value="{TITLE}"></OBJECT><UL>
        <LI><OBJECT type="text/sitemap"><param name="Name" value="Start"><param name="Local" value="html\\START.htm"></OBJECT>
        </UL><LI><OBJECT type="text/sitemap"><param name="Local" value="html/print.htm#options"><param name="Name" value="Print">
        </OBJECT></UL>""".encode("cp932"),
    "Words.hhk": """<UL><LI><OBJECT type="text/sitemap"><param name="Name" value="printing"></OBJECT><UL>
        <LI><OBJECT type="text/sitemap"><param name="Name" value="paper"><param name="Name" value="Print"><param name="Local"
        value="html\\print.htm#paper"></OBJECT></UL></UL>""",
    "html/Start.htm": "<h1>Welcome</h1>",
    "html/print.htm": """<h1>Printing</h1><h2 id="options">Options</h2><h2 id="paper">Paper</h2>""",
}
TOPICS = [
    ("IDH_MORE", "pages/html/print.htm", "Printing"),
    ("IDH_OPTION", "pages/html/print.htm#options", "Options"),
    ("IDH_START", "pages/html/Start.htm", "Welcome"),
    ("1001", "pages/html/print.htm#options", "Options"),
    ("1000", "pages/html/Start.htm", "Welcome"),
    ("printing, paper", "pages/html/print.htm#paper", "Paper"),
    ("html/Start", "pages/html/Start.htm", "Welcome"),
    ("html/print", "pages/html/print.htm", "Printing"),
    ("options", "pages/html/print.htm#options", "Options"),
    ("paper", "pages/html/print.htm#paper", "Paper"),
]
CONTENTS = [(0, None, TITLE), (1, "pages/html/Start.htm", "Start"), (0, "pages/html/print.htm#options", "Print")]
NOTES = ["not there; name them behind the folder: 1 (gone.h)"]
