"""The names that can stand for each other, read from the sources, and from a small table for Qt's enumerations."""

import os
import re

ENUM = re.compile(r"\benum\s+(?P<scoped>class\s+)?(?P<name>\w+)\s*(?::[^{;]*)?\{(?P<body>[^}]*)\}")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
COPIED_MEMBER = re.compile(r"[:,]\s*(\w+_)[({](?:std::move\()?(\w+)\)?[)}]")

QT = {
    "Qt": ["AlignLeft AlignRight AlignHCenter", "AlignTop AlignBottom AlignVCenter", "ElideLeft ElideMiddle ElideRight",
           "NoFocus TabFocus ClickFocus StrongFocus", "white black transparent", "LeftEdge RightEdge",
           "TopEdge BottomEdge", "Horizontal Vertical", "LeftToRight RightToLeft", "LeftButton RightButton",
           "SizeVerCursor SizeHorCursor", "SizeFDiagCursor SizeBDiagCursor", "FlatCap RoundCap SquareCap",
           "MiterJoin RoundJoin BevelJoin", "SolidLine DashLine DotLine",
           "ScrollBarAlwaysOn ScrollBarAlwaysOff ScrollBarAsNeeded", "QueuedConnection DirectConnection",
           "PlainText RichText", "CTRL ALT", "ApplicationModal WindowModal NonModal", "CopyAction MoveAction"],
    "QFont": ["Normal Medium DemiBold Bold"],
    "QSizePolicy": ["Fixed Minimum Maximum Preferred Expanding Ignored"],
    "QPalette": ["WindowText Window Button ButtonText Text Base", "Highlight HighlightedText"],
    "QTextOption": ["NoWrap WordWrap WrapAnywhere WrapAtWordBoundaryOrAnywhere"],
    "QAccessible": ["Window List ListItem Grouping Graphic Slider", "ObjectShow ObjectHide"],
    "QStyle": ["SC_SliderGroove SC_SliderHandle",
               "SC_ScrollBarGroove SC_ScrollBarSlider SC_ScrollBarSubPage SC_ScrollBarAddPage"],
    "QMessageBox": ["AcceptRole RejectRole DestructiveRole"],
    "QChar": ["LineSeparator ParagraphSeparator"],
}


def stem(path):
    return os.path.splitext(os.path.basename(path))[0]


class Family:
    """The names of one enumeration, in order."""

    def __init__(self, qualifier, names, owner=None):
        # What stands before "::".
        self.qualifier = qualifier
        self.names = names
        # For an unscoped enumeration, the file name of the type that has it.
        self.owner = owner


class Vocabulary:
    def __init__(self, sources):
        self.families = [Family(qualifier, names.split()) for qualifier, groups in QT.items() for names in groups]
        # By the file's name without extension, the members that a constructor copies from a parameter.
        self.copied_members = {}
        for source in sources:
            text = COMMENT.sub("", source.text)
            name = stem(source.path)
            for enum in ENUM.finditer(text):
                names = [entry.split("=")[0].strip() for entry in enum["body"].split(",")]
                self.families.append(Family(enum["name"], [entry for entry in names if entry],
                                            None if enum["scoped"] else name))
            members = {member for member, _ in COPIED_MEMBER.findall(text)}
            self.copied_members.setdefault(name, set()).update(members)

    def family(self, qualifier, name, path):
        """Returns the names of the enumeration that has this one, or an empty list."""
        for family in self.families:
            if name in family.names and len(family.names) > 1:
                in_owner = family.owner == stem(path) and qualifier == ""
                if qualifier != "" and qualifier in (family.qualifier, family.owner) or in_owner:
                    return family.names
        return []

    def is_enumeration(self, name):
        return any(name == family.qualifier for family in self.families)
