VARYING vec4 color;
void MAIN() {
    FRAGCOLOR = vec4(color.rgb * strength, strength);
}
