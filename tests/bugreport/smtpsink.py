#!/usr/bin/env python3
"""A local SMTP server for the bug report tests (aiosmtpd).

Usage: smtpsink.py PORT OUTFILE [REFUSED_ADDRESS]
Listens on 127.0.0.1:PORT, appends one JSON line per received mail to OUTFILE (sender, recipients,
headers, decoded subject and body), refuses RCPT TO the REFUSED_ADDRESS with 550, prints READY when
it accepts connections and stops when its standard input closes.
"""
import email
import email.policy
import json
import sys

from aiosmtpd.controller import Controller


class Sink:
    def __init__(self, out, refused):
        self.out = out
        self.refused = refused

    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if address == self.refused:
            return "550 5.1.1 No such mailbox here"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        msg = email.message_from_bytes(envelope.original_content, policy=email.policy.default)
        record = {
            "mail_from": envelope.mail_from,
            "rcpt_tos": envelope.rcpt_tos,
            "headers": {k: str(v) for k, v in msg.items()},
            "subject": str(msg["subject"]),
            "body": msg.get_content(),
        }
        with open(self.out, "a", encoding="utf-8") as f:
            f.write(json.dumps(record) + "\n")
        return "250 Message accepted"


def main():
    port, out = int(sys.argv[1]), sys.argv[2]
    refused = sys.argv[3] if len(sys.argv) > 3 else None
    controller = Controller(Sink(out, refused), hostname="127.0.0.1", port=port)
    controller.start()
    print("READY", flush=True)
    try:
        sys.stdin.read()
    finally:
        controller.stop()


if __name__ == "__main__":
    main()
