"""The AT-SPI accessibility tree, as a screen reader sees it."""

import os
import warnings

import gi

# libatspi reads this when it is loaded: uncached answers are never stale. Clearing the cache before each query
# would fetch the states of a node four times instead of once.
os.environ["ATSPI_NO_CACHE"] = "1"

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from driver.waiting import Unmet  # noqa: E402

# The binding flags the replacement of the deprecated function as deprecated.
warnings.filterwarnings("ignore", "Atspi.Action.get_action_name is deprecated")

Role = Atspi.Role
State = Atspi.StateType
BUTTONS = [Role.PUSH_BUTTON, Role.TOGGLE_BUTTON, Role.RADIO_BUTTON, Role.CHECK_BOX]
# Roles without children.
LEAVES = [Role.LABEL, Role.CHECK_BOX, Role.SLIDER, Role.IMAGE, Role.PROGRESS_BAR, Role.TEXT, Role.TABLE_COLUMN_HEADER]
# Directional isolates (U+2066 to U+2069), in which file names are wrapped.
ISOLATES = dict.fromkeys(range(0x2066, 0x206A))


def name_of(node):
    """The accessible name, without directional isolates."""
    return node.get_name().translate(ISOLATES)


def text_of(field):
    """The text of a text field."""
    return Atspi.Text.get_text(field, 0, -1)


def has_state(node, state):
    return node.get_state_set().contains(state)


def is_enabled(node):
    return has_state(node, State.ENABLED)


def descendants(node, hidden=False):
    """The visible descendants, or all if `hidden`, in preorder."""
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child and (hidden or has_state(child, State.SHOWING)):
            yield child
            yield from descendants(child, hidden)


def outline(node, depth=1):
    """The visible descendants, one line each, for the failure report."""
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child and has_state(child, State.SHOWING):
            yield f"{'  ' * depth}{child.get_role_name()} {name_of(child)!r}"
            yield from outline(child, depth + 1)


def find(root, roles, name=None, hidden=False):
    """The first descendant with one of the roles, and the name if given, or None."""
    roles = roles if isinstance(roles, list) else [roles]
    for index in range(root.get_child_count()):
        child = root.get_child_at_index(index)
        if not child:
            continue
        # Each query is a D-Bus call: skip those that cannot change the result.
        role = child.get_role()
        if role in LEAVES and role not in roles:
            continue
        if not hidden and not has_state(child, State.SHOWING):
            continue
        if role in roles and name in (None, name_of(child)):
            return child
        found = find(child, roles, name, hidden) if role not in LEAVES else None
        if found:
            return found
    return None


def actions(node):
    return [Atspi.Action.get_action_name(node, index) for index in range(node.get_n_actions())]


def act(node, *names):
    """Does the first named action that the node offers."""
    offered = actions(node)
    action = next((name for name in names if name in offered), None)
    if action is None or not node.do_action(offered.index(action)):
        raise Unmet(f'"{name_of(node)}" offers {offered}, none of {names}')


def rectangle(node):
    """The extents of the node in screen coordinates: x, y, width, height."""
    extents = node.get_extents(Atspi.CoordType.SCREEN)
    return extents.x, extents.y, extents.width, extents.height


def middle(node):
    x, y, width, height = rectangle(node)
    return x + width // 2, y + height // 2
