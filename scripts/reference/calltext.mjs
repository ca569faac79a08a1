// The call text the battery renderer evaluates for a theme script: the script's parameter list
// decides between the short form (up to five parameters) and the long form (six or more).
// Numbers are printed the way C's printf prints them, so both engines see the same text.

const PARAMETER_LIST = /\((?:\s*[A-z]+[a-z0-9]*\s*)(?:,\s*[A-z]+[a-z0-9]*\s*)*\)/i;

// printf("%.Nf") rounds exact ties to even; Number.toFixed rounds them away from zero.
export function printfFixed(value, digits) {
  const exact = Math.abs(value).toFixed(Math.min(100, digits + 60));
  const [whole, fraction] = exact.split('.');
  let kept = BigInt(whole + fraction.slice(0, digits));
  const rest = fraction.slice(digits);
  const half = '5'.padEnd(rest.length, '0');
  if (rest > half || (rest === half && kept % 2n === 1n)) kept += 1n;
  let text = kept.toString().padStart(digits + 1, '0');
  if (digits > 0) text = `${text.slice(0, -digits)}.${text.slice(-digits)}`;
  return (value < 0 && /[1-9]/.test(text) ? '-' : '') + text;
}

export function parameterCount(script) {
  const match = PARAMETER_LIST.exec(script);
  if (!match) return 0;
  return match[0].split(',').length;
}

// state: { height (pixels), level, charging, low, lpm, color: [r,g,b], baseColor: [r,g,b,a] }
export function callArguments(script, state) {
  const flag = (b) => `!!${b ? 1 : 0}`;
  const height = printfFixed(Math.fround(state.height), 0);
  const level = Math.trunc(state.level ?? 0);
  const [r, g, b] = state.color ?? [255, 255, 255];
  if (parameterCount(script) > 5) {
    const [br, bg, bb, ba] = state.baseColor ?? [0, 0, 0, 1];
    return `(${height},${level},${flag(state.charging)},${flag(state.low)},${flag(state.lpm)},` +
           `[${r},${g},${b}],[${br},${bg},${bb},${printfFixed(ba, 2)}])`;
  }
  return `(${height},${level},${flag(state.charging)},${flag(state.low)},[${r},${g},${b}])`;
}

// Null when the script has no parameter list: the renderer draws nothing for it.
export function callText(script, state) {
  if (parameterCount(script) === 0) return null;
  return `(function${script})${callArguments(script, state)}`;
}

// The preview script that ships inside the settings bundle, one line, as theme authors know it.
export const BUILT_IN_SCRIPT = '(c,g,l,m,e){var d=Math.round(3*c/4)/2;c=Math.floor(c/20);var h=2*d+c,f=document.createElement("canvas"),a=f.getContext("2d");e=e.join();var b=h/2,n=4*d/3,k=Math.PI;100==g&&(n=d);f.width=h;f.height=h;a.lineWidth=c;a.strokeStyle="rgba("+e+",0.3)";m&&(a.strokeStyle="rgba(255,59,48,0.3)");l&&(a.strokeStyle="rgba(76,217,100,0.3)");a.arc(b,b,d,0,2*k);a.stroke();a.strokeStyle="rgb("+e+")";m&&(a.strokeStyle="#FF3B30");l&&(a.strokeStyle="#4CD964");a.fillStyle=a.strokeStyle;a.beginPath();a.arc(b,b,d,k*((100-g)/50-.5),1.5*k);a.stroke();a.font=n+"px Helvetica Neue";a.textAlign="center";a.textBaseline="middle";a.fillText(g,b,b);return f.toDataURL("image/png")}';
