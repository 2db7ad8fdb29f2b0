#!/usr/bin/env python3
"""A small window whose F1 key opens the help for the field in focus."""
import tkinter
from concurrent.futures import Future, ThreadPoolExecutor
from tkinter import ttk

import olh

MANUAL = "olh_manual"
FIELDS = {  # label: topic of the manual
    "Documentation": "search_path",
    "Browser": "viewers",
    "Result": "result_codes",
}


class Form(tkinter.Tk):
    def __init__(self) -> None:
        super().__init__()
        self.title("Form with help")
        self.topics: dict[str, str] = {}
        # One thread for all calls: a call may take seconds, and the library wants one caller at a time.
        self.caller = ThreadPoolExecutor(max_workers=1)
        for row, (label, topic) in enumerate(FIELDS.items()):
            ttk.Label(self, text=label).grid(row=row, column=0, sticky="e", padx=6, pady=4)
            entry = ttk.Entry(self, width=32)
            entry.grid(row=row, column=1, padx=6, pady=4)
            self.topics[str(entry)] = topic
            if row == 0:
                entry.focus_set()
        self.status = ttk.Label(self, text="F1 helps with the field in focus.", anchor="w")
        self.status.grid(row=len(FIELDS), column=0, columnspan=2, sticky="ew", padx=6, pady=6)
        self.bind("<F1>", self.help)

    def help(self, _event: "tkinter.Event[tkinter.Misc]") -> None:
        topic = self.topics.get(str(self.focus_get()), "")
        self.status["text"] = "Opening the help ..."
        self.wait_for(self.caller.submit(olh.show, MANUAL, topic))

    def wait_for(self, shown: "Future[olh.Result]") -> None:
        if not shown.done():
            self.after(50, self.wait_for, shown)
            return
        result = shown.result()
        self.status["text"] = "Help is in your browser." if result is olh.Result.OK else result.message


if __name__ == "__main__":
    Form().mainloop()
