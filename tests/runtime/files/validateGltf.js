// Runs the Khronos glTF validator on glTF files and prints one JSON line per file:
//   {"file": PATH, "errors": N, "messages": ["CODE at POINTER: TEXT", ...]}
// with the messages of severity error. Exits with 0 when no file has errors.
// Usage: node validateGltf.js VALIDATOR_MODULE_FOLDER FILE...
'use strict';
const fs = require('fs');
const path = require('path');
const validator = require(process.argv[2]);

async function validate(file) {
    const report = await validator.validateBytes(new Uint8Array(fs.readFileSync(file)), {
        uri: path.basename(file),
        maxIssues: 0,
        externalResourceFunction: (uri) =>
            Promise.resolve(new Uint8Array(fs.readFileSync(path.join(path.dirname(file), decodeURIComponent(uri))))),
    });
    const errors = report.issues.messages.filter((m) => m.severity === 0);
    console.log(JSON.stringify({
        file,
        errors: report.issues.numErrors,
        messages: errors.map((m) => `${m.code} at ${m.pointer}: ${m.message}`),
    }));
    return report.issues.numErrors;
}

(async () => {
    let errors = 0;
    for (const file of process.argv.slice(3))
        errors += await validate(file);
    process.exit(errors === 0 ? 0 : 1);
})().catch((error) => {
    console.error(String(error));
    process.exit(2);
});
