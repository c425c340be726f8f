#!/usr/bin/env python3
"""Makes mistakes in the list of what the macOS desktop uses, and sees that the check finds each of them.

usage: seeded_mistakes.py LIST PACKAGE (see check-contract)
"""

import sys

import contract
import framework_metadata

# What is wrong; an entry of the list; what stands there; what is put in its place; words of the complaint.
MISTAKES = [
    ("a class that is not there", "message NSTimer - invalidate", "NSTimer", "NSTimers", "no class"),
    ("a selector with a slip", "message NSUserDefaults - dataForKey:", "dataForKey:", "dateForKey:", "no instance method"),
    ("a message to the class that its objects understand", "message NSDate - timeInterval", " - ", " + ", "no class method"),
    ("a message to an object that the class understands", "message NSDate + dateWith", " + ", " - ", "no instance method"),
    ("a slip in how objects are held", "message NSObject - retain ", "retain", "retian", "no instance method"),
    ("an argument too many", "message NSRunLoop - addTimer:", "object NSString", "object NSString, id", "takes 2 arguments"),
    ("an argument too few", "function CGEventPost", ", id", "", "takes 2 arguments"),
    ("a narrower number", "message NSUserDefaults - setDouble:", "f64", "f32", "argument 1"),
    ("a number of another sign", "message NSArray - objectAtIndex:", "u64", "i64", "argument 1"),
    ("a truth as a number", "message NSUserDefaults - setBool:", "bool", "i32", "argument 1"),
    ("an object of another class", "message NSRunLoop - addTimer:", "object NSTimer", "object NSDate", "argument 1"),
    ("a result of another class", "message NSProcessInfo - environment", "object NSDictionary", "object NSArray", "result"),
    ("a result of another type", "message NSDate - timeInterval", "f64", "i64", "result"),
    ("a record for another", "message NSCalendar - rangeOfUnit:inUnit:", "struct _NSRange", "struct CGPoint", "result"),
    ("a block with another argument", "message SCShareableContent + get", "object NSError", "f64", "argument 3"),
    ("a block with an argument too few", "message SCShareableContent + get", ", object NSError", "", "argument 3"),
    ("a result that is thought to be owned", "message NSCalendar + auto", " shared ", " owned ", "owned by somebody else"),
    ("a result that is thought to be shared", "message NSAppleScript - init", " owned ", " shared ", "owned by the caller"),
    ("a made object that is thought to be shared", "function CGEventSourceCreate", " owned ", " shared ", "owned by the caller"),
    ("an enumeration that is not there", "function CGEventPost", "CGEventTapLocation", "CGEventTapLocations", "no enumeration"),
    ("a function that is not there", "function AXIsProcessTrusted ", "AXIsProcessTrusted", "AXProcessIsTrusted", "no function"),
    ("a slip in what sends messages", "function objc_msgSend ", "objc_msgSend", "objc_sendMsg", "no function"),
    ("a function with a narrower argument", "function RegisterEventHotKey", "u32, u32, struct", "u16, u32, struct", "argument 1"),
    ("a callback that returns nothing", "function InstallEventHandler", "function(i32,", "function(void,", "argument 2"),
    ("a variable that is not there", "global kCGWindowLayer", "kCGWindowLayer", "kCGWindowLevel", "no variable"),
    ("a variable of another type", "global NSRunLoopCommonModes", "object NSString", "f64", "object NSString"),
    ("a number that is another one", "number NSEventType ScrollWheel", " 22", " 23", "it is 22"),
    ("an enumerator with a slip", "enumerator NSBoxType primary", "primary", "primal", "no number"),
    ("an enumerator of another number", "enumerator NSCalendarUnit year", " 4", " 8", "it is 4"),
    ("two fields the wrong way round", "field EventHotKeyID id", " 4 ", " 0 ", "it lies at 4"),
    ("a field of another type", "field EventTypeSpec eventKind", "u32", "u16", "u32 and not u16"),
    ("a record without one of its fields", "field CGRect size", "field CGRect size 16 struct CGSize", "", "CGRect.size is not"),
    ("an enumeration without a number", "number NSVisualEffectMaterial", "number NSVisualEffectMaterial Menu 5", "", "no number"),
    ("a constant that is another one", "number - optionKey", "2048", "1024", "it is 2048"),
]


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    lines = contract.whole_list(sys.argv[1])
    metadata = framework_metadata.Package(sys.argv[2]).metadata
    missed = 0
    for title, start, old, new, words in MISTAKES:
        at = next((number for number, line in enumerate(lines) if line.startswith(start)), None)
        if at is None or old not in lines[at]:
            sys.exit(f"{title}: nothing on the list starts with {start!r} and has {old!r}")
        changed = lines[:at] + [lines[at].replace(old, new, 1)] + lines[at + 1:]
        found = contract.problems(contract.read_list(changed), metadata)
        if len(found) != 1 or words not in found[0][1]:
            missed += 1
            print(f"{title}: {[problem for _, problem in found]}")
    print(f"{len(MISTAKES)} mistakes, {missed} missed")
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
