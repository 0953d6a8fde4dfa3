#!/usr/bin/env python3
"""An engine for ibus: letters are composed, Return gives their capitals to the application, Escape
gives them up. It says "engine" once it is in use."""

import gi

gi.require_version("IBus", "1.0")
from gi.repository import GLib, IBus  # noqa: E402

NAME = "vorq-capitals"


class Capitals(IBus.Engine):
    __gtype_name__ = "VorqCapitals"

    def __init__(self, **kwargs):
        super().__init__(**kwargs)
        self.composed = ""

    def show(self):
        text = IBus.Text.new_from_string(self.composed)
        self.update_preedit_text(text, len(self.composed), bool(self.composed))

    def do_process_key_event(self, keyval, keycode, state):
        if state & (IBus.ModifierType.RELEASE_MASK | IBus.ModifierType.CONTROL_MASK):
            return False
        if ord("a") <= keyval <= ord("z"):
            self.composed += chr(keyval)
        elif not self.composed:
            return False
        elif keyval == IBus.KEY_Return:
            self.commit_text(IBus.Text.new_from_string(self.composed.upper()))
            self.composed = ""
        elif keyval == IBus.KEY_Escape:
            self.composed = ""
        self.show()
        return True


IBus.init()
bus = IBus.Bus()
factory = IBus.Factory.new(bus.get_connection())
factory.add_engine(NAME, Capitals.__gtype__)
component = IBus.Component.new("org.vorq.Capitals", "", "1", "", "", "", "", "")
component.add_engine(IBus.EngineDesc.new(NAME, NAME, "", "en", "", "", "", "us"))
bus.register_component(component)
bus.request_name("org.vorq.Capitals", 0)



# The answer comes once the engine below is made, which this process does meanwhile.
def is_in_use(_, result):
    print("engine" if bus.set_global_engine_async_finish(result) else "refused", flush=True)


bus.set_global_engine_async(NAME, -1, None, is_in_use)
GLib.MainLoop().run()
