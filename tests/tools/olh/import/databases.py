"""Databases as sources have them."""
import sqlite3


def database(tables, *rows):
    """The bytes of one with these tables, and (TABLE, ROWS) in them."""
    made = sqlite3.connect(":memory:")
    made.executescript(tables)
    for table, lines in rows:
        for line in lines:
            made.execute(f"INSERT INTO {table} VALUES ({', '.join('?' * len(line))})", line)
    made.commit()
    return made.serialize()
