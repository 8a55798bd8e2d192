// An ALU of 40 bits with eight registers and an accumulator of 80. Nothing is reset, so that every register is
// unknown until something is loaded into it. All outputs are registered.
//
// Deliberate mistakes, for the testbench to find:
//   BUG_CARRY    the sum is computed in two words, and the carry between them is lost
//   BUG_UNKNOWN  a comparison in an `if`: where it is unknown, the else branch calls it false
module alu (
    input  wire               clk,
    input  wire        [3:0]  op,
    input  wire        [2:0]  ra,      // the registers of both operands
    input  wire        [2:0]  rb,
    input  wire        [2:0]  rd,      // the register that takes the result
    input  wire               write,   // whether it does
    input  wire        [5:0]  shift,   // by how much
    input  wire        [39:0] data,    // what is loaded
    output reg         [39:0] result,
    output reg                carry,   // of an addition; of a subtraction, the borrow
    output reg                equal,   // of both operands, as they were before the clock
    output reg                less,    // as signed numbers
    output reg  signed [79:0] accumulator
);
    localparam [3:0] LOAD = 0, AND = 1, OR = 2, XOR = 3, NOT = 4, ADD = 5, SUB = 6, MUL = 7, SHL = 8, SHR = 9, SAR = 10,
                     SWAP = 11, DIV = 12, REM = 13, MAC = 14, CLEAR = 15;

    reg  [39:0] registers [0:7];
    wire [39:0] a = registers[ra];
    wire [39:0] b = registers[rb];

    reg [39:0] y;
    reg        c;
    always @* begin
        c = 1'b0;
        case (op)
            LOAD: y = data;
            AND:  y = a & b;
            OR:   y = a | b;
            XOR:  y = a ^ b;
            NOT:  y = ~a;
`ifdef BUG_CARRY
            ADD:  begin
                      {c, y[39:32]} = a[39:32] + b[39:32];
                      y[31:0] = a[31:0] + b[31:0];
                  end
`else
            ADD:  {c, y} = a + b;
`endif
            SUB:  {c, y} = a - b;
            MUL:  y = a * b;
            SHL:  y = a << shift;
            SHR:  y = a >> shift;
            SAR:  y = $signed(a) >>> shift;
            SWAP: y = {a[19:0], a[39:20]};
            DIV:  y = {8'b0, a[31:0] / b[31:0]};
            REM:  y = {8'b0, a[31:0] % b[31:0]};
            MAC:  y = a;
            CLEAR: y = b;
        endcase
    end

    always @(posedge clk) begin
        result <= y;
        carry <= c;
        equal <= a == b;
`ifdef BUG_UNKNOWN
        if ($signed(a) < $signed(b)) less <= 1'b1;
        else less <= 1'b0;
`else
        less <= $signed(a) < $signed(b);
`endif
        if (write) registers[rd] <= y;
        case (op)
            MAC: accumulator <= accumulator + $signed(a) * $signed(b);
            CLEAR: accumulator <= 80'sd0;
            default: ;
        endcase
    end
endmodule
