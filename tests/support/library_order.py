"""The order of the library's texts, for programs that open its file by themselves."""
import icu

_collator = icu.Collator.createInstance(icu.Locale("zh"))
_collator.setStrength(icu.Collator.SECONDARY)


def compare(left, right):
    return _collator.compare(left.rstrip(" "), right.rstrip(" "))


def know(connection):
    """Lets an sqlite3 connection compare as the library does; a wrong order would spoil its indexes."""
    connection.create_collation("QUILLA", compare)
